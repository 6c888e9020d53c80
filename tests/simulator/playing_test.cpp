// A controller plays the programs that were written to it. Its time stands still until a test moves it.
#include "host.h"
#include "program_samples.h"
#include "simulator/Programs.h"

#include <gmock/gmock.h>

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <mutex>

namespace qm::sim {
namespace {

using test::Host;
using test::sealed;
using testing::HasSubstr;
using namespace std::chrono_literals;

// A program of one area of 8 x 1 with two pages: the first LED for 200 ms, the last one for 300 ms.
Frame program_file(const std::string& digits = "30 30 31") {
    return sealed("00 50 " + digits +
                  " 00 00 01 00 00 00*10 FF 00*8  00 00 00 01"
                  " 51 00 00 00  00 00 00 00 00 08 00 01 00  00  00 00 00  00  00*5  02 00"
                  " 1A 00 00 00  00 01 00 00 14 00 01 08 00  00*9  0E 00 00 00 01 00 00 00"
                  " 1A 00 00 00  00 01 00 00 1E 00 01 08 00  00*9  0F 00 00 00 01 00 00 00");
}
Frame data_file(const std::string& pixels = "7F FE", const std::string& digits = "30 30 31") {
    return sealed("09 44 " + digits + " 00*8 " + pixels);
}

// The screens that were shown, and a way to wait for one of them.
class Shown {
  public:
    void add(const Image& screen) {
        const std::lock_guard lock(m_mutex);
        m_latest = test::letters(screen);
        m_changed.notify_all();
    }
    bool wait_for(const std::string& screen) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, 10s, [&] { return m_latest == screen; });
    }

  private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_latest;
};

class Playing : public testing::Test {
  protected:
    static constexpr std::uint16_t kType = 0x0662; // generation 6, planes of 8 pixels

    void write(const std::string& name, const Frame& file) {
        EXPECT_EQ(m_host.write(name, file, name[0] == 'D' ? 9 : 0), 0U);
    }
    void write_program() {
        write("P001", program_file());
        write("D001", data_file());
    }
    [[nodiscard]] std::string screen() const { return test::letters(m_sim.screen()); }

    std::atomic<Time> m_up{Time{0}};
    Shown m_shown;
    std::mutex m_mutex;
    std::string m_log; // guarded by the mutex
    Simulator m_sim{{.type = kType,
                     .width = 8,
                     .height = 1,
                     .color = ScreenColor::single,
                     .uptime = [this] { return m_up.load(); },
                     .on_screen = [this](const Image& image) { m_shown.add(image); },
                     .on_request =
                         [this](const std::string& words) {
                             const std::lock_guard lock(m_mutex);
                             m_log = words;
                         }}};
    Host m_host{m_sim};
};

TEST_F(Playing, BeginsWhenBothFilesAreThere) {
    write("P001", program_file());
    EXPECT_EQ(screen(), "........");
    EXPECT_EQ(m_sim.state().program, "");
    m_up = 1h;
    write("D001", data_file());
    EXPECT_EQ(screen(), "R.......") << "from the start";
    EXPECT_EQ(m_sim.state().program, "P001");
    m_up = 1h + 200ms;
    EXPECT_EQ(screen(), ".......R");
    EXPECT_TRUE(m_sim.program_errors().empty());
}

TEST_F(Playing, ShowsEveryPageWithoutBeingAsked) {
    write_program();
    EXPECT_TRUE(m_shown.wait_for("R......."));
    m_up = 200ms;
    EXPECT_TRUE(m_shown.wait_for(".......R"));
    m_up = 500ms;
    EXPECT_TRUE(m_shown.wait_for("R......."));
}

TEST_F(Playing, SaysWhatIsWrongWithAProgram) {
    write_program();
    write("D001", data_file("7F"));
    EXPECT_EQ(screen(), "........");
    EXPECT_THAT(m_sim.program_errors()["P001"], HasSubstr("data length of a page"));
    {
        const std::lock_guard lock(m_mutex);
        EXPECT_THAT(m_log, HasSubstr("program P001 cannot be played: program file, byte"));
    }
    write("D001", data_file("BF FE"));
    EXPECT_EQ(screen(), ".R......");
    EXPECT_TRUE(m_sim.program_errors().empty());
}

TEST_F(Playing, TakesTurnsUntilAProgramIsLocked) {
    write_program();
    write("P002", program_file("30 30 32"));
    write("D002", data_file("00 00", "30 30 32"));
    EXPECT_EQ(m_sim.state().program, "P001");
    m_up = 1s; // each is shown for a second at least
    EXPECT_EQ(screen(), "RRRRRRRR");
    EXPECT_TRUE(m_host.control(14, "00 01 50 30 30 31 00 00 00 00").acknowledged());
    EXPECT_EQ(screen(), "R.......");
    EXPECT_TRUE(m_host.control(14, "00 00 50 30 30 31 00 00 00 00").acknowledged());
    EXPECT_EQ(screen(), "RRRRRRRR");
    EXPECT_TRUE(m_host.file(1, "01 00 50 30 30 32").acknowledged());
    EXPECT_EQ(screen(), "R.......") << "the one that is left";
}

TEST_F(Playing, GoesOnBelowDynamicAreas) {
    write_program();
    test::Client client(m_sim.port());
    client.ask(test::envelope_around(test::payload_of({{1, {0, 0, 4, 1}, {test::hex("AF")}}})));
    EXPECT_EQ(screen(), ".R.R....");
    m_up = 200ms;
    EXPECT_EQ(screen(), ".R.R...R");
}

TEST_F(Playing, GoesOnAfterARestart) {
    const std::string store = testing::TempDir() + "qm_playing_store";
    std::filesystem::remove_all(store);
    const Options options{
        .type = kType, .width = 8, .height = 1, .color = ScreenColor::single, .store = store};
    {
        Simulator sim(options);
        Host host(sim);
        EXPECT_EQ(host.write("P001", program_file()), 0U);
        EXPECT_EQ(host.write("D001", data_file("00 00"), 9), 0U);
    }
    EXPECT_EQ(test::letters(Simulator(options).screen()), "RRRRRRRR");
    std::filesystem::remove_all(store);
}

TEST(ProgramsOfGeneration5, NeedNoDataFile) {
    FileSystem files;
    files.restore({FileFamily::ordinary, "P007", 0, test::file_g5()});
    files.restore({FileFamily::ordinary, "P008", 1, test::file_g5()}); // no program
    Programs programs(Generation::five, 16, 8, {TransferMode::planes8, ScreenColor::single});
    EXPECT_EQ(programs.update(files, Time{0}), "; program P007 is played");
    EXPECT_EQ(programs.update(files, Time{0}), "") << "nothing has changed";
    const LocalSeconds nine(9h); // in its first play period
    EXPECT_EQ(programs.playing(Time{0}, nine, {}), "P007");
    // The screen's border of 16 x 2 lies over the area.
    EXPECT_EQ(test::letters(programs.screen(Time{0}, nine, {})).substr(0, 33),
              "RRRR........RRRR/....RRRRRRRR....");
}

} // namespace
} // namespace qm::sim
