// A controller's files and settings in a folder, so that they outlive the simulator:
//
//     index.json        the settings, and a list of the files
//     ordinary/P001     data, by family and name
//     configuration/C000
//
// What is damaged is never written over: it moves to damaged-1, damaged-2, ...
#pragma once

#include "simulator/controller/ControllerState.h"
#include "simulator/controller/FileSystem.h"

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

namespace qm::sim {

class Store {
  public:
    using Complain = std::function<void(const std::string&)>;
    struct Contents {
        ControllerState settings;
        std::vector<StoredFile> files;
    };

    // Makes the folder when there is none; throws std::runtime_error when that cannot be done.
    Store(std::filesystem::path folder, Complain complain);

    // What was kept; what is damaged is complained about and left out.
    Contents load();
    // Writes what has changed. A failure is complained about, and tried anew with the next change.
    void save(const ControllerState& settings, const FileSystem& files);

  private:
    Contents load_index();
    bool load_data(StoredFile& file);
    void write_changes(const ControllerState& settings, const FileSystem& files);
    // Where it is now.
    std::filesystem::path set_aside(const std::vector<std::filesystem::path>& paths);
    [[nodiscard]] std::filesystem::path path_of(FileFamily family, const std::string& name) const;

    std::filesystem::path m_folder;
    Complain m_complain;
    std::map<std::filesystem::path, std::uint64_t> m_kept; // version of each data file
};

// Replaces the file at once; throws std::system_error.
void write_whole(const std::filesystem::path& path, Bytes bytes);

} // namespace qm::sim
