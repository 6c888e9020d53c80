// A controller plays the programs that were written to it. Its time stands still until a test moves it.
#include "host.h"
#include "program_samples.h"
#include "simulator/controller/Programs.h"

#include <gmock/gmock.h>

#include <atomic>
#include <condition_variable>
#include <filesystem>
#include <mutex>

namespace qm::sim {
namespace {

using test::data_file;
using test::Host;
using test::program_file;
using testing::HasSubstr;
using namespace std::chrono_literals;

// What was told last, and a way to wait for it.
class Told {
  public:
    void tell(const std::string& what) {
        const std::lock_guard lock(m_mutex);
        m_latest = what;
        m_changed.notify_all();
    }
    bool wait_for(const std::string& what) {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, 10s, [&] { return m_latest == what; });
    }
    std::string latest() {
        const std::lock_guard lock(m_mutex);
        return m_latest;
    }

  private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::string m_latest;
};

class Playing : public testing::Test {
  protected:
    static constexpr std::uint16_t kType = 0x0662; // generation 6, planes of 8 pixels

    void write(const std::string& name, const ByteBuffer& file) {
        EXPECT_EQ(m_host.write(name, file, name[0] == 'D' ? 9 : 0), 0U);
    }
    void write_program() {
        write("P001", program_file());
        write("D001", data_file());
    }
    [[nodiscard]] std::string screen() const { return test::letters(m_sim.screen()); }

    // What the status names and counts, and what the state and its reports name.
    struct Named {
        std::string status, state, reported;
        unsigned count = 0;
        bool operator==(const Named&) const = default;
    };
    Named named() {
        const ByteBuffer status = m_host.control(15, "").payload;
        const std::string name(status.begin() + 6, status.begin() + 10);
        return {name.substr(0, name.find('\0')), m_sim.state().program, m_program.latest(),
                unsigned{status[4]} | unsigned{status[5]} << 8U};
    }

    std::atomic<Milliseconds> m_up{Milliseconds{0}};
    std::atomic<LocalSeconds> m_clock{LocalSeconds{7h}};
    Told m_shown, m_log, m_program;
    Simulator m_sim{{.type = kType,
                     .width = 8,
                     .height = 1,
                     .color = ScreenColor::single,
                     .clock = [this] { return m_clock.load(); },
                     .uptime = [this] { return m_up.load(); },
                     .on_screen = [this](const Image& image) { m_shown.tell(test::letters(image)); },
                     .on_request = [this](const std::string& words) { m_log.tell(words); },
                     .on_state = [this](const Snapshot& state,
                                        const std::vector<StoredFile>&) { m_program.tell(state.program); }}};
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
    EXPECT_THAT(m_log.latest(), HasSubstr("program P001 cannot be played: program file, byte"));
    EXPECT_THAT(m_log.latest(), HasSubstr("; no program is played"));
    EXPECT_EQ(named(), (Named{"", "", "", 1}));
    write("D001", data_file("BF FE"));
    EXPECT_EQ(screen(), ".R......");
    EXPECT_TRUE(m_sim.program_errors().empty());
}

TEST_F(Playing, TakesTurnsUntilAProgramIsLocked) {
    write_program();
    write("P002", program_file("50 30 30 32"));
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

TEST_F(Playing, StatusStateAndLogNameTheProgramOnTheScreen) {
    write("P001", program_file("50 30 30 31", "01 08 00 00 09 00 00")); // from 8 to 9
    EXPECT_EQ(named(), (Named{"", "", "", 0})) << "its data are not there yet";
    write("D001", data_file());
    EXPECT_THAT(m_log.latest(), testing::EndsWith("; program P001 is complete"));
    EXPECT_EQ(named(), (Named{"", "", "", 1})) << "none is due at 7";
    m_clock = LocalSeconds{8h};
    m_up = 1h;
    EXPECT_TRUE(m_log.wait_for("program P001 is played"));
    EXPECT_EQ(named(), (Named{"P001", "P001", "P001", 1}));
    write("1002", program_file("31 30 30 32"));
    write("D002", data_file("00 00", "30 30 32"));
    EXPECT_THAT(m_log.latest(), HasSubstr("; program 1002 is complete; program 1002 is played"));
    EXPECT_EQ(named(), (Named{"1002", "1002", "1002", 2}));
    m_up = 1h + 1s;
    EXPECT_TRUE(m_log.wait_for("program P001 is played")) << "it takes its turn";
    EXPECT_TRUE(m_host.control(13, "00 01").acknowledged());
    m_up = 1h + 2s;
    EXPECT_EQ(named(), (Named{"P001", "P001", "P001", 2})) << "on the locked screen";
    EXPECT_TRUE(m_host.control(14, "00 01 50 30 30 39 00 00 00 00").acknowledged());
    EXPECT_TRUE(m_host.control(13, "00 00").acknowledged());
    EXPECT_THAT(m_log.latest(), HasSubstr("unlocked: acknowledged; no program is played"));
    EXPECT_EQ(named(), (Named{"", "", "", 2})) << "the locked program is not there";
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
    Programs programs(Generation::five, {16, 8, {TransferMode::planes8, ScreenColor::single}});
    EXPECT_EQ(programs.update(files, Milliseconds{0}), "; program P007 is complete");
    EXPECT_EQ(programs.update(files, Milliseconds{0}), "") << "nothing has changed";
    const LocalSeconds nine(9h); // in its first play period
    EXPECT_EQ(programs.playing({Milliseconds{0}, nine}), "P007");
    // The screen's border of 16 x 2 lies over the area.
    EXPECT_EQ(test::letters(programs.screen({Milliseconds{0}, nine})).substr(0, 33),
              "RRRR........RRRR/....RRRRRRRR....");
}

} // namespace
} // namespace qm::sim
