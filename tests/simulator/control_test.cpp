// Control and network commands: what they change, what the controller then says of itself, what it refuses.
#include "host.h"
#include "simulator/show/picture.h"

#include <atomic>
#include <sstream>

namespace qm::sim {
namespace {

using namespace std::chrono;
using test::Host;
using test::is_hex;

constexpr LocalSeconds at(int y, unsigned m, unsigned d, int hour = 0, int minute = 0, int second = 0) {
    return local_days(year(y) / month(m) / day(d)) + hours(hour) + minutes(minute) + seconds(second);
}

// A controller whose host has a clock that tests move.
struct Controlled {
    std::atomic<LocalSeconds> now = at(2026, 3, 1, 12);
    Simulator sim{
        {.width = 8, .height = 1, .color = ScreenColor::single, .clock = [this] { return now.load(); }}};
    Host host{sim};

    std::string screen() const { return test::letters(sim.screen()); }
    void draw() {
        test::Client client(sim.port());
        client.ask(test::envelope_around(test::payload_of({{1, {0, 0, 8, 1}, {test::hex("FF*3 7F")}}})));
    }
};

TEST(Control, ClockRunsOnFromWhatItWasSetTo) {
    Controlled c;
    ASSERT_TRUE(c.host.control(2, "24 20 02 29 23 59 58 04").acknowledged());
    EXPECT_EQ(c.sim.state().clock, at(2024, 2, 29, 23, 59, 58));
    c.now = c.now.load() + 3s;
    EXPECT_THAT(c.host.control(23, "00").payload, is_hex("24 20 03 01 00 00 01 05"));
}

struct Refusal {
    const char* what;
    std::uint8_t group, cmd;
    const char* payload;
    unsigned error;
};

TEST(Control, ImpossibleValuesAreRefusedAndChangeNothing) {
    const Refusal rows[] = {
        {"30 February", 0xA2, 2, "24 20 02 30 00 00 00 00", 104},
        {"29 February of no leap year", 0xA2, 2, "23 20 02 29 00 00 00 00", 104},
        {"hour 24", 0xA2, 2, "24 20 02 01 24 00 00 00", 104},
        {"a digit above 9", 0xA2, 2, "24 20 02 0A 00 00 00 00", 104},
        {"weekday 7", 0xA2, 2, "24 20 02 01 00 00 00 07", 104},
        {"year 1999", 0xA2, 2, "99 19 02 01 00 00 00 00", 104},
        {"firmware that is not there", 0xA2, 3, "46 30 30 31", 108},
        {"screen neither on nor off", 0xA2, 5, "02", 104},
        {"timer with half a period", 0xA2, 6, "01 08 00 22", 103},
        {"timer with minute 60", 0xA2, 6, "01 08 60 22 00", 104},
        {"brightness mode 3", 0xA2, 7, "03 0F*48", 104},
        {"brightness level 16", 0xA2, 7, "00 10 0F*47", 104},
        {"screen lock 2", 0xA2, 13, "00 02", 104},
        {"program lock kept over restarts by 2", 0xA2, 14, "02 01 50 30 30 31 00 00 00 00", 104},
        {"negative delay", 0xA2, 18, "FF FF", 104},
        {"negative screen address", 0xA2, 27, "00 80", 104},
        {"stopwatch mode 4", 0xA2, 24, "04", 104},
        {"subnet mask with a hole", 0xA4, 1, "00 C0 A8 01 05 FF 00 FF 00 00*42", 104},
        {"a code without a meaning", 0xA2, 4, "", 101},
        {"another one", 0xA2, 22, "", 101},
        {"one beyond the last", 0xA2, 28, "", 101},
        {"a group without a meaning", 0xB0, 0, "", 101},
    };
    Controlled c;
    const ControllerState before = c.sim.state();
    for (const Refusal& row : rows) {
        const test::Answer answer = c.host.ask(row.group, row.cmd, test::hex(row.payload));
        EXPECT_TRUE(answer.refused()) << row.what;
        EXPECT_EQ(answer.error, row.error) << row.what;
        EXPECT_TRUE(static_cast<const ControllerState&>(c.sim.state()) == before) << row.what;
    }
}

TEST(Control, PayloadsOfTheOtherGenerationAreRefused) {
    const ByteBuffer lock5 = test::hex("00 01 50 30 30 31 00*4"), lock6 = test::hex("00 01 50 30 30 31 00*5");
    const ByteBuffer area5 =
        test::hex("2A 00 00 00 09 01 03 02 01 00 00 01 00*4 10 00 00 00 00 08 00 01 00 00 01 00 "
                  "0E 00 00 00 00 01 00 00 00 00 01 08 00 00*4 7F");
    const ByteBuffer area6 = test::content_of({{1, {0, 0, 8, 1}, {test::hex("7F")}}});
    const ByteBuffer configuration5 = test::hex("43 30 30 30 01 26 00 00 00 01 00*4");
    const ByteBuffer configuration6 = test::hex("43 30 30 30 01 5E 00 00 00 01 00*4");
    const ByteBuffer voice = test::hex("00 01 04 14 00 00 00 00*20");
    const struct {
        const char* what;
        std::uint8_t group, cmd;
        const ByteBuffer& payload;
        unsigned five, six; // error value of each generation
    } rows[] = {{"area of 5", 0xA7, 0, area5, 0, 112},
                {"area of 6", 0xA7, 0, area6, 112, 0},
                {"configuration of 5", 0xA1, 11, configuration5, 0, 112},
                {"configuration of 6", 0xA1, 11, configuration6, 112, 0},
                {"program lock of 5, which hosts send to both", 0xA2, 14, lock5, 0, 0},
                {"program lock of 6", 0xA2, 14, lock6, 112, 0},
                {"speech", 0xA7, 2, voice, 101, 0}};
    const Simulator five({.type = 0x0154, .width = 8, .height = 1, .color = ScreenColor::single});
    const Simulator six({.type = 0x0662, .width = 8, .height = 1, .color = ScreenColor::single});
    for (const auto& row : rows) {
        EXPECT_EQ(Host(five).ask(row.group, row.cmd, row.payload).error, row.five) << row.what;
        EXPECT_EQ(Host(six).ask(row.group, row.cmd, row.payload).error, row.six) << row.what;
    }
    EXPECT_EQ(five.dynamic_areas().size() + six.dynamic_areas().size(), 2U);
}

TEST(Control, ScreenIsDarkWhileItIsOff) {
    Controlled c;
    c.draw();
    EXPECT_TRUE(c.host.control(5, "00").acknowledged());
    EXPECT_EQ(c.screen(), "........");
    EXPECT_FALSE(c.sim.state().power);
    EXPECT_TRUE(c.host.control(5, "01").acknowledged());
    EXPECT_EQ(c.screen(), "R.......");
}

TEST(Control, TimerFollowsTheControllersOwnClockPastMidnight) {
    Controlled c;
    ASSERT_TRUE(c.host.control(2, "26 20 03 01 00 00 00 00").acknowledged()); // 12 hours behind its host
    ASSERT_TRUE(c.host.control(6, "02 08 30 12 00 22 00 02 00").acknowledged());
    struct Row {
        int hour, minute;
        bool on;
    };
    for (const Row& row : {Row{0, 0, true}, Row{1, 59, true}, Row{2, 0, false}, Row{8, 29, false},
                           Row{8, 30, true}, Row{11, 59, true}, Row{12, 0, false}, Row{22, 0, true}}) {
        c.now = at(2026, 3, 1, 12) + hours(row.hour) + minutes(row.minute);
        EXPECT_EQ(c.sim.state().power, row.on) << row.hour << ":" << row.minute;
    }
    c.now = at(2026, 3, 1, 15);
    EXPECT_EQ(c.host.control(15, "").payload[0], 0);
    EXPECT_EQ(c.host.control(15, "").payload[1], 1); // by timer
    EXPECT_TRUE(c.host.control(8, "").acknowledged());
    EXPECT_TRUE(c.sim.state().power);
}

TEST(Control, BrightnessDimsTheScreenByTheHalfHour) {
    Controlled c;
    c.draw();
    const Rgb full = c.sim.screen().at(0, 0);
    EXPECT_EQ(full, (Rgb{255, 0, 0}));
    ASSERT_TRUE(c.host.control(7, "01 0F*25 07 0F*22").acknowledged()); // 12:30 to 13:00
    EXPECT_EQ(c.sim.screen().at(0, 0), full);
    c.now = at(2026, 3, 1, 12, 30);
    EXPECT_EQ(c.sim.screen().at(0, 0), (Rgb{153, 0, 0}));
    EXPECT_EQ(c.host.control(15, "").payload[3], 7);
    ASSERT_TRUE(c.host.control(7, "00 03 0F*47").acknowledged());
    EXPECT_EQ(c.sim.screen().at(0, 0), (Rgb{102, 0, 0}));
    ASSERT_TRUE(c.host.control(7, "00 00 0F*47").acknowledged());
    const Rgb least = led_panel(c.sim.screen(), 8).at(4, 4), unlit = led_panel(c.sim.screen(), 8).at(12, 4);
    EXPECT_GT(least.r, 2 * unlit.r) << "the lowest level can be told from an LED that is not lit";
    EXPECT_THAT(c.host.control(25, "").payload, is_hex("0F 00 00 00"));
}

TEST(Control, RestartKeepsSettingsAndEndsVolatileLocks) {
    Controlled c;
    c.draw();
    struct Row {
        const char *screen, *program;
        bool kept;
    };
    for (const Row& row : {Row{"00 01", "00 01 50 30 30 31 00 00 00 00", false},
                           Row{"01 01", "01 01 50 30 30 31 00 00 00 00 00", true}}) {
        ASSERT_TRUE(c.host.control(13, row.screen).acknowledged());
        ASSERT_TRUE(c.host.control(14, row.program).acknowledged());
        EXPECT_TRUE(c.sim.state().screen_lock.locked && c.sim.state().program_lock.locked);
        EXPECT_EQ(c.sim.state().program_lock.program, "P001");
        ASSERT_TRUE(c.host.control(27, "05 00").acknowledged());
        ASSERT_TRUE(c.host.control(1, "").acknowledged());
        EXPECT_EQ(c.sim.state().screen_lock.locked, row.kept);
        EXPECT_EQ(c.sim.state().program_lock.locked, row.kept);
        EXPECT_EQ(c.sim.state().address, 5);
        EXPECT_EQ(c.screen(), "........");
    }
    EXPECT_EQ(c.sim.state().resets, 2U);
}

TEST(Control, LockedScreenGoesOnShowingWhatItShowed) {
    Controlled c;
    ASSERT_TRUE(c.host.control(13, "00 01").acknowledged());
    c.draw();
    EXPECT_EQ(c.screen(), "........");
    ASSERT_TRUE(c.host.control(13, "00 00").acknowledged());
    EXPECT_EQ(c.screen(), "R.......");
}

TEST(Control, PasswordIsChangedAndDeletedByItsHolderOnly) {
    Controlled c;
    ASSERT_TRUE(c.host.control(16, "00*6 31 32 33 34 35 36").acknowledged());
    EXPECT_EQ(c.host.control(16, "39*6 41*6").error, 111);
    EXPECT_EQ(c.host.control(17, "39*6").error, 111);
    EXPECT_EQ(c.sim.state().password, "123456");
    EXPECT_TRUE(c.host.control(16, "31 32 33 34 35 36 41*6").acknowledged());
    EXPECT_TRUE(c.host.control(17, "41*6").acknowledged());
    EXPECT_EQ(c.sim.state().password, "");
}

TEST(Control, SettingsWithoutSightAreKept) {
    Controlled c;
    ASSERT_TRUE(c.host.control(18, "0A 00").acknowledged());
    ASSERT_TRUE(c.host.control(19, "03 00*5").acknowledged());
    ASSERT_TRUE(c.host.control(20, "01 02 03 04 05 06 07 08 09 0A 0B").acknowledged());
    ASSERT_TRUE(c.host.control(21, "02 00*5").acknowledged());
    ASSERT_TRUE(c.host.control(26, "FE FF").acknowledged());
    const Snapshot state = c.sim.state();
    EXPECT_EQ(state.power_on_delay, 10);
    EXPECT_EQ(state.button_mode, 3);
    EXPECT_EQ(state.timing_reset[10], 0x0B);
    EXPECT_EQ(state.display_mode, 2);
    EXPECT_EQ(state.speed, -2);
    EXPECT_EQ(c.host.control(10, "").payload.size(), 8U);
    for (const char* mode : {"01", "02", "03"}) EXPECT_EQ(c.host.control(24, mode).payload.size(), 4U);
    EXPECT_THAT(c.host.control(24, "00").payload, is_hex("00*4"));
}

TEST(Control, StatusTellsEverythingByteForByte) {
    Controlled c;
    ASSERT_TRUE(c.host.control(14, "00 01 50 30 30 33 00 00 00 00").acknowledged());
    EXPECT_THAT(c.host.control(15, "").payload,
                is_hex("01 00 00 0F 00 00 00 00 00 00 00 01 01 01 26 20 03 01 12 00 00 00 00*10 00 00*12 "
                       "51 4D 2D 53 49 4D 55 4C 41 54 4F 52 2D 30 30 31"));
}

constexpr const char* kSetIp = "01 C0 A8 02 05 FF FF 00 00 C0 A8 02 01 8E 13 02 0A 00 00 07 39 30 "
                               "70 61 73 73 77 6F 72 64 3C 00 6E 65 74 49 44 00*7 00*7";

TEST(Network, SettingsAreToldByEverySearch) {
    Controlled c;
    ASSERT_TRUE(c.host.network(0, "00 1A 2B 3C 4D 5E").acknowledged());
    ASSERT_TRUE(c.host.network(1, kSetIp).acknowledged());
    EXPECT_THAT(c.host.network(2, "").payload,
                is_hex("70 61 73 73 77 6F 72 64 C0 A8 02 05 FF FF 00 00 C0 A8 02 01 8E 13 00 1A 2B 3C 4D 5E "
                       "6E 65 74 49 44 00*7"));
    const ByteBuffer six = c.host.network(3, "").payload;
    ASSERT_EQ(six.size(), 206U);
    EXPECT_THAT(Bytes(six).first(51),
                is_hex("00 1A 2B 3C 4D 5E C0 A8 02 05 FF FF 00 00 C0 A8 02 01 8E 13 01 01 02 0A 00 00 07 "
                       "39 30 70 61 73 73 77 6F 72 64 3C 00 6E 65 74 49 44 00*7"));
    EXPECT_THAT(Bytes(six).subspan(67, 19),
                is_hex("62 02 53 49 4D 20 31 2E 30 30 01 01 00 00 08 00 01 00 01"));
}

TEST(Network, WebServerMakesTheSearchLonger) {
    const Simulator sim({.long_search = true});
    const ByteBuffer answer = Host(sim).network(3, "").payload;
    ASSERT_EQ(answer.size(), 595U);
    EXPECT_THAT(Bytes(answer).subspan(51 + 389 + 16, 2), is_hex("62 02"));
}

TEST(Control, PayloadCutAnywhereIsRefusedAndChangesNothing) {
    // Group, command and payload.
    std::istringstream commands(
        std::string("A1 01 02 00 50 30 30 31 50 30 30 32;A1 02 50 30 30 31 00 04 00 00 00 01 00*4;"
                    "A1 03 50 30 30 31 01 00 00 00 00 01;A1 04 50 30 30 31;"
                    "A1 05 50 30 30 31 00 00 00 00;A1 06 00 20;A1 07 00 00;A1 0A 01 00 50 30 30;"
                    "A1 0B 43 30 30 30 01 26 00 00 00 01 00*4;A1 0C 43 30 30 30 01 00 00 00 00 01;"
                    "A1 0D 43 30 30 30;A1 0E 43 30 30 30 00 00 00 00;A2 02 24 20 02 29 23 59 58 04;"
                    "A2 03 50 30 30 31;A2 05 00;A2 06 02 08 30 12 00 22 00 02 00;A2 07 01 07*48;"
                    "A2 0D 00 01;A2 0E 00 01 50 30 30 31 00 00 00 00;A2 10 00*6 31*6;A2 11 31*6;"
                    "A2 12 05 00;A2 13 05 00*5;A2 14 01*11;A2 15 05 00*5;A2 17 00;A2 18 00;"
                    "A2 1A 05 00;A2 1B 05 00;A4 00 01*6;"
                    "A4 01 ") +
        kSetIp);
    Controlled c;
    const ControllerState before = c.sim.state();
    for (std::string command; std::getline(commands, command, ';');) {
        const ByteBuffer whole = test::hex(command);
        for (std::size_t length = 0; length + 2 < whole.size(); ++length)
            EXPECT_TRUE(c.host.ask(whole[0], whole[1], Bytes(whole).subspan(2, length)).refused())
                << command << " cut after " << length;
    }
    EXPECT_TRUE(static_cast<const ControllerState&>(c.sim.state()) == before);
    EXPECT_TRUE(c.sim.files().empty());
}

TEST(Control, CommandsWithoutPayloadRefuseOne) {
    Controlled c;
    for (const int cmd : {0, 8, 9, 18, 19})
        EXPECT_EQ(c.host.file(static_cast<std::uint8_t>(cmd), "00").error, 102) << cmd;
    for (const int cmd : {0, 1, 8, 10, 15, 25})
        EXPECT_EQ(c.host.control(static_cast<std::uint8_t>(cmd), "00").error, 102) << cmd;
    for (const int cmd : {2, 3}) EXPECT_EQ(c.host.network(static_cast<std::uint8_t>(cmd), "00").error, 102);
}

} // namespace
} // namespace qm::sim
