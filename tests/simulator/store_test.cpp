// The store: files and settings outlive the simulator, and damage loses nothing.
#include "host.h"

#include <filesystem>
#include <fstream>

namespace qm::sim {
namespace {

namespace fs = std::filesystem;
using test::Host;
using test::is_hex;

std::string text_in(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void put(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

class StoreTest : public testing::Test {
  protected:
    StoreTest() { fs::remove_all(m_folder); }
    ~StoreTest() override { fs::remove_all(m_folder); }

    Options options() {
        return {.store = m_folder,
                .on_trouble = [this](const std::string& words) { m_trouble += words + "\n"; }};
    }
    // A file, a configuration, a name that no file system likes, and settings.
    void fill() {
        const Simulator sim(options());
        Host host(sim);
        ASSERT_EQ(host.write("P001", test::hex("01 02 03 04"), 7), 0U);
        ASSERT_EQ(host.write("P002", test::hex("05 06 07 08")), 0U);
        ASSERT_EQ(host.write("../\xFF", test::hex("09 0A 0B 0C")), 0U);
        ASSERT_EQ(host.write("D001", test::hex("0D 0E 0F 10"), 1, true, true), 0U);
        ASSERT_TRUE(host.file(1, "01 00 50 30 30 32").acknowledged());
        ASSERT_TRUE(host.network(0, "01 02 03 04 05 06").acknowledged());
        ASSERT_TRUE(host.control(6, "01 08 00 22 30").acknowledged());
        ASSERT_TRUE(host.control(7, "01 03*48").acknowledged());
        ASSERT_TRUE(host.control(13, "00 01").acknowledged());
        ASSERT_TRUE(host.control(14, "01 01 50 30 30 31 00 00 00 00").acknowledged());
        ASSERT_TRUE(host.control(16, "00*6 FF 00 41 42 25 0A").acknowledged());
    }

    const fs::path m_folder = fs::path(testing::TempDir()) / ("qm_store_" + std::to_string(::getpid()));
    std::string m_trouble;
};

TEST_F(StoreTest, FilesAndSettingsOutliveTheSimulator) {
    fill();
    const Simulator sim(options());
    EXPECT_EQ(m_trouble, "");
    EXPECT_EQ(sim.files().size(), 3U);
    ASSERT_TRUE(sim.file("P001"));
    EXPECT_EQ(sim.file("P001")->type, 7);
    EXPECT_THAT(sim.file("P001")->data, is_hex("01 02 03 04"));
    EXPECT_THAT(sim.file("../\xFF")->data, is_hex("09 0A 0B 0C"));
    EXPECT_EQ(sim.file("D001")->family, FileFamily::configuration);
    const Snapshot state = sim.state();
    EXPECT_EQ(state.network.mac, (std::array<std::uint8_t, 6>{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(state.timing, (std::vector<OnOffTime>{{8, 0, 22, 30}}));
    EXPECT_EQ(state.brightness.mode, BrightnessMode::by_clock);
    EXPECT_EQ(state.brightness.levels[47], 3);
    EXPECT_FALSE(state.screen_lock.locked);
    EXPECT_EQ(state.program_lock.program, "P001");
    EXPECT_EQ(state.password, std::string("\xFF\0AB%\n", 6));
    EXPECT_EQ(text_in(m_folder / "ordinary/P001"), "\1\2\3\4");
    EXPECT_FALSE(fs::exists(m_folder / "ordinary/P002"));
}

TEST_F(StoreTest, DamagedIndexIsSetAsideWithItsFiles) {
    fill();
    const std::string whole = text_in(m_folder / "index.json");
    const std::string rows[] = {
        "",
        "{",
        whole.substr(0, whole.size() / 2),
        "[]",
        R"({"settings":{},"files":[{"family":"ordinary","name":"TOOLONG","type":0,"crc":0}]})",
        R"({"settings":{"address":70000},"files":[]})",
        R"({"settings":{"timing":{}},"files":[]})",
        R"({"settings":{"network":{"ip":"1.2.3"}},"files":[]})",
        R"({"settings":{"password":"%4"},"files":7})"};
    unsigned n = 0;
    for (const std::string& index : rows) {
        ++n;
        m_trouble.clear();
        fs::create_directory(m_folder / "ordinary");
        put(m_folder / "ordinary/P001", "precious");
        put(m_folder / "index.json", index);
        const Simulator sim(options());
        EXPECT_THAT(m_trouble, testing::HasSubstr("damaged")) << index;
        EXPECT_TRUE(sim.files().empty()) << index;
        const fs::path aside = m_folder / ("damaged-" + std::to_string(n));
        EXPECT_EQ(text_in(aside / "index.json"), index);
        EXPECT_EQ(text_in(aside / "ordinary/P001"), "precious");
        EXPECT_EQ(Host(sim).write("P001", test::hex("01 02 03 04")), 0U);
        EXPECT_EQ(text_in(aside / "ordinary/P001"), "precious");
    }
}

TEST_F(StoreTest, FilesWithoutAnIndexAreSetAside) {
    fill();
    fs::remove(m_folder / "index.json");
    const Simulator sim(options());
    EXPECT_TRUE(sim.files().empty());
    EXPECT_EQ(text_in(m_folder / "damaged-1/ordinary/P001"), "\1\2\3\4");
}

TEST_F(StoreTest, DamagedFileIsLeftOutAndKept) {
    fill();
    put(m_folder / "ordinary/P001", "other");
    fs::remove(m_folder / "configuration/D001");
    const Simulator sim(options());
    EXPECT_THAT(m_trouble, testing::AllOf(testing::HasSubstr("P001: its CRC is wrong"),
                                          testing::HasSubstr("D001: it is missing")));
    EXPECT_EQ(sim.files().size(), 1U);
    EXPECT_EQ(text_in(m_folder / "damaged-1/P001"), "other");
}

TEST_F(StoreTest, FailureToWriteIsToldAndTheSimulatorGoesOn) {
    std::size_t seen = 0; // files, by a look from where the failure is told
    std::function<void()> look;
    Options watched = options();
    watched.on_trouble = [&](const std::string& words) { m_trouble += words, look(); };
    const Simulator sim(watched);
    look = [&] { seen = sim.files().size(); };
    fs::remove_all(m_folder);
    put(m_folder, "in the way");
    EXPECT_EQ(Host(sim).write("P001", test::hex("01 02 03 04")), 0U);
    EXPECT_THAT(m_trouble, testing::HasSubstr("the store was not written"));
    EXPECT_EQ(seen, 1U);
    EXPECT_TRUE(sim.file("P001"));
    EXPECT_THROW(Simulator({.store = m_folder / "below"}), std::runtime_error);
}

} // namespace
} // namespace qm::sim
