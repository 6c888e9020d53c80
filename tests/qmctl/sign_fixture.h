// Signs in a folder, and controllers that are made so.
#pragma once

#include "fixture.h"
#include "options/names.h"

#include <filesystem>
#include <fstream>
#include <map>

namespace qm::test {

// A folder of descriptions.
class Folder {
  public:
    Folder() {
        std::string pattern = testing::TempDir() + "qmctl_sign_XXXXXX";
        m_path = mkdtemp(pattern.data());
        const ByteBuffer picture = hex(kPicture);
        write("picture.png", {picture.begin(), picture.end()});
    }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;
    ~Folder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }

    [[nodiscard]] const std::string& path() const { return m_path.native(); }
    std::string write(const std::string& name, const std::string& text) const {
        std::ofstream(m_path / name, std::ios::binary) << text;
        return (m_path / name).string();
    }
    // So many pages, each a block of the upload; more fields in front.
    std::string program(const std::string& name, unsigned id, unsigned pages,
                        const std::string& more = "") const {
        const std::vector<std::string> pictures(pages, "\"picture.png\"");
        return write(name, "{" + more + "\"id\": " + std::to_string(id) +
                               ", \"areas\": [{\"id\": 0, \"pictures\": [" + options::joined(pictures) +
                               "]}]}");
    }

  private:
    std::filesystem::path m_path;
};

// Names with their bytes.
inline std::map<std::string, ByteBuffer> files_of(const sim::Simulator& controller) {
    std::map<std::string, ByteBuffer> files;
    for (const sim::StoredFile& file : controller.files()) files[file.name] = file.data;
    return files;
}

class Sign : public testing::Test {
  protected:
    Outcome apply(const sim::Simulator& controller, const std::string& sign, const Words& options = {}) {
        return qmctl(Words{"-c", address(controller.port()), "apply", sign} + options);
    }
    // The states of files and settings by their names.
    std::map<std::string, std::string> planned(const sim::Simulator& controller, const std::string& sign,
                                               int status) {
        const Outcome outcome = qmctl({"--json", "-c", address(controller.port()), "plan", sign});
        EXPECT_EQ(outcome.status, status) << outcome.err;
        std::map<std::string, std::string> states;
        const auto plan = nlohmann::json::parse(outcome.out);
        for (const char* list : {"programs", "settings"})
            for (const auto& one : plan.at(list)) states[one.at("name")] = one.at("state");
        return states;
    }

    Folder folder;
};

} // namespace qm::test
