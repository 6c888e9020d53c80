// The files that a program is made from and becomes.
#pragma once

#include "qm_sdk_dual.hpp"

#include <filesystem>

namespace qm::sign {

[[nodiscard]] bool starts_as_png(const std::string& path);

// Makes the folder when there is none, and the file. Throws std::runtime_error.
void write_file(const std::filesystem::path& folder, const std::string& name, std::string_view bytes);

// A private folder, removed with all that was written there.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

  private:
    std::filesystem::path m_path;
};

// One that is the calling thread's current folder as long as the object lives; other threads keep theirs.
class TemporaryCurrentFolder {
  public:
    TemporaryCurrentFolder();
    TemporaryCurrentFolder(const TemporaryCurrentFolder&) = delete;
    TemporaryCurrentFolder& operator=(const TemporaryCurrentFolder&) = delete;
    ~TemporaryCurrentFolder();

  private:
    TemporaryFolder m_folder;
    int m_before; // descriptor of the folder to go back to
};

} // namespace qm::sign
