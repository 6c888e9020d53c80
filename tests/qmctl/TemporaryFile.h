// A file in the folder for temporary ones, removed with the object.
#pragma once

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace qm::test {

class TemporaryFile {
  public:
    // In a folder of its own, so that the name is the given one.
    template <class Content>
    TemporaryFile(const std::string& name, const Content& content)
        : m_folder(testing::TempDir() + "qmctl" + std::to_string(::getpid()) + "-" +
                   std::to_string(s_number++)),
          m_path(m_folder / name) {
        std::filesystem::create_directory(m_folder);
        std::ofstream(m_path, std::ios::binary)
            .write(reinterpret_cast<const char*>(content.data()),
                   static_cast<std::streamsize>(content.size()));
    }
    ~TemporaryFile() {
        std::error_code ignored;
        std::filesystem::remove_all(m_folder, ignored);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    [[nodiscard]] std::string path() const { return m_path; }

  private:
    static inline unsigned s_number = 0;
    const std::filesystem::path m_folder, m_path;
};

} // namespace qm::test
