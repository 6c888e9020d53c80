// A folder of the target's own, removed when the process ends. It is the current one for as long as an input
// runs: inputs themselves are named from where the process began.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace qm::fuzz {

class OwnFolder {
  public:
    OwnFolder() {
        std::string name = std::filesystem::temp_directory_path() / "qm_fuzz_XXXXXX";
        m_path = mkdtemp(name.data());
    }
    OwnFolder(const OwnFolder&) = delete;
    OwnFolder& operator=(const OwnFolder&) = delete;
    ~OwnFolder() { std::filesystem::remove_all(m_path); }

    class Entered {
      public:
        explicit Entered(const OwnFolder& folder) { std::filesystem::current_path(folder.m_path); }
        Entered(const Entered&) = delete;
        Entered& operator=(const Entered&) = delete;
        ~Entered() { std::filesystem::current_path(m_before); }

      private:
        std::filesystem::path m_before = std::filesystem::current_path();
    };

  private:
    std::filesystem::path m_path;
};

// A file in the current folder.
inline void write_file(const std::string& name, std::string_view bytes) {
    std::ofstream(name, std::ios::binary).write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace qm::fuzz
