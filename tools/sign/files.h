// The files that a program is made from and becomes.
#pragma once

#include "qm_sdk_dual.hpp"

#include <filesystem>

namespace qm::sign {

// Makes the folder when there is none, and the file. Throws std::runtime_error.
void write_file(const std::filesystem::path& folder, const std::string& name, std::string_view bytes);

// A private folder that is the current one as long as the object lives, and is removed with all that was
// written there.
class TemporaryFolder {
  public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    ~TemporaryFolder();

  private:
    std::filesystem::path m_path;
    int m_before; // descriptor of the folder to go back to
};

} // namespace qm::sign
