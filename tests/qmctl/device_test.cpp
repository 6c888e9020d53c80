// What the verbs for power, locks, clock and settings change in a controller, and what it says of itself.
#include "fixture.h"
#include "scripted_peer.h"
#include "wire.h"

#include <gmock/gmock.h>

namespace qm::test {
namespace {

using namespace std::chrono_literals;
using sim::Snapshot;
using testing::AllOf;
using testing::Each;
using testing::HasSubstr;

// Its host's clock stands at 2024-02-29 23:59:58.
constexpr sim::LocalSeconds kNow{std::chrono::local_days{2024y / 2 / 29} + 23h + 59min + 58s};
class Device : public ControllerTest {
  protected:
    Device() : ControllerTest({.clock = [] { return kNow; }}) {}
};

TEST_F(Device, EveryCommandHasItsEffect) {
    using State = const Snapshot&;
    const struct {
        const char* arguments;
        bool (*is_done)(State);
    } steps[] = {
        {"power off", [](State s) { return !s.power; }},
        {"power on", [](State s) { return s.power; }},
        {"power timer 07:30-12:00 13:00-22:15",
         [](State s) {
             return s.timing == std::vector<sim::OnOffTime>{{7, 30, 12, 0}, {13, 0, 22, 15}};
         }},
        {"power cancel", [](State s) { return s.timing.empty() && s.power; }},
        {"lock screen --keep", [](State s) { return s.screen_lock.locked && s.screen_lock.nonvolatile; }},
        {"unlock screen", [](State s) { return s.screen_lock == sim::Lock{}; }},
        {"lock program P007 --for 4294967295",
         [](State s) { return !s.program_lock.nonvolatile && s.program_lock.duration == 0xFFFFFFFF; }},
        {"unlock program P007", [](State s) { return !s.program_lock.locked; }},
        {"password set 000000 s3cret", [](State s) { return s.password == "s3cret"; }},
        {"password delete s3cret", [](State s) { return s.password.empty(); }},
        {"button 3", [](State s) { return s.button_mode == 3; }},
        {"mode 255", [](State s) { return s.display_mode == 255; }},
        {"speed -32768", [](State s) { return s.speed == -32768; }},
        {"address 32767", [](State s) { return s.address == 32767; }},
        {"delay 10", [](State s) { return s.power_on_delay == 10; }},
        {"brightness 7", [](State s) { return s.brightness.mode == sim::BrightnessMode::manual; }},
        {"reset", [](State s) { return s.resets == 1; }},
    };
    for (const auto& step : steps) {
        done(step.arguments);
        EXPECT_TRUE(step.is_done(controller.state())) << step.arguments;
    }
}

TEST_F(Device, ManualBrightnessHoldsAllDayAndATableByHalfHours) {
    done({"brightness", "7"});
    EXPECT_THAT(controller.state().brightness.levels, Each(7));
    std::string numbers;
    for (int i = 0; i < 48; ++i) numbers += std::to_string(i / 4) + (i % 6 == 5 ? "\n" : " ");
    done({"brightness", "--table", TemporaryFile("levels", numbers).path()});
    const Snapshot state = controller.state();
    EXPECT_EQ(state.brightness.mode, sim::BrightnessMode::by_clock);
    for (std::size_t i = 0; i < 48; ++i) EXPECT_EQ(state.brightness.levels[i], i / 4);
    EXPECT_EQ(state.brightness_level, 11U) << "two seconds before midnight";
}

TEST_F(Device, TimerTakes255PeriodsAndNoMore) {
    Words arguments{"power", "timer"};
    const auto time = [](int minute) {
        return std::to_string(minute / 600) + std::to_string(minute / 60 % 10) + ":" +
               std::to_string(minute % 60 / 10) + std::to_string(minute % 10);
    };
    for (int i = 0; i < 255; ++i) arguments.push_back(time(5 * i) + "-" + time(5 * i + 5));
    done(arguments);
    EXPECT_EQ(controller.state().timing.size(), 255U);
    arguments.emplace_back("22:00-22:05");
    const std::size_t before = controller.connections();
    EXPECT_EQ(run(arguments).status, 1);
    EXPECT_EQ(controller.connections(), before);
}

TEST_F(Device, ClockIsShownAndSet) {
    EXPECT_EQ(json({"clock"})["clock"], "2024-02-29T23:59:58");
    EXPECT_EQ(json({"battle"})["clock"], "2024-02-29T23:59:58");
    const auto host = sim::host_time();
    done({"clock", "set"});
    const auto set = controller.state().clock;
    EXPECT_GE(set, host);
    EXPECT_LE(set, sim::host_time());
}

TEST_F(Device, StatusTellsWhatWasSet) {
    done({"power", "timer", "07:30-12:00"});
    done({"lock", "screen"});
    done({"lock", "program", "P007"});
    done({"brightness", "3"});
    const nlohmann::json status = json({"status"});
    const nlohmann::json expected{{"power", "off"},
                                  {"timer", "on"},
                                  {"brightness", 3},
                                  {"brightness_mode", "manual"},
                                  {"programs", 0},
                                  {"current_program", ""},
                                  {"screen_lock", "locked"},
                                  {"program_lock", "locked"},
                                  {"clock", "2024-02-29T23:59:58"},
                                  {"bar_code", "QM-SIMULATOR-001"}};
    for (const auto& [key, value] : expected.items()) EXPECT_EQ(status[key], value) << key;
}

TEST_F(Device, IdIsShownInHexAndAsText) {
    const nlohmann::json id = json({"id"});
    EXPECT_EQ(id["id"], "514D53494D303031");
    EXPECT_EQ(id["text"], "QMSIM001");
}

TEST_F(Device, NetworkIsShownAlsoOfAControllerWithAWebServer) {
    const sim::Simulator with_web({.width = 64, .long_search = true});
    for (const sim::Simulator* of : {const_cast<const sim::Simulator*>(&controller), &with_web}) {
        const nlohmann::json network = qmctl_json(of->port(), {"network", "show"});
        EXPECT_EQ(network["mac"], "02:51:4D:00:00:01");
        EXPECT_EQ(network["ip"], "192.168.0.199");
        EXPECT_EQ(network["port"], 5005);
        EXPECT_EQ(network["width"], of == &with_web ? 64 : 128);
        EXPECT_EQ(network["type"], 0x0262);
    }
}

TEST_F(Device, RefusalIsSaidInWordsAndChangesNothing) {
    done({"password", "set", "000000", "s3cret"});
    const Snapshot before = controller.state();
    for (const auto& [arguments, words] : {std::pair{"brightness 16", "error 104"},
                                           {"password delete wrong1", "error 111"},
                                           {"firmware activate F001", "error 108"}}) {
        const Outcome outcome = run(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, AllOf(HasSubstr(words), HasSubstr(address(controller.port()))));
        EXPECT_EQ(outcome.out, "");
    }
    EXPECT_EQ(static_cast<sim::ControllerState>(controller.state()),
              static_cast<sim::ControllerState>(before));
}

TEST(Ping, TellsScriptsAndPeopleWhatTheControllerIs) {
    const struct {
        sim::Options options;
        const char *model, *color;
    } cases[] = {
        {{.type = 0x0262, .width = 128, .height = 32, .color = sim::ScreenColor::dual},
         "G6-T0 (0x62)",
         "double"},
        {{.type = 0x0166, .width = 64, .height = 16, .color = sim::ScreenColor::full},
         "G6-T3 (0x66)",
         "full"},
        {{.type = 0x0174, .width = 512, .height = 256, .color = sim::ScreenColor::three},
         "6H (0x74)",
         "three"},
        {{.type = 0x0151, .width = 32, .height = 8, .color = sim::ScreenColor::single},
         "G5-T1 (0x51)",
         "single"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.model);
        const sim::Simulator controller(c.options);
        const nlohmann::json found = qmctl_json(controller.port(), {"ping"});
        const nlohmann::json expected{{"ok", true},
                                      {"status", 0},
                                      {"model", c.model},
                                      {"type", c.options.type},
                                      {"firmware", "SIM 1.00"},
                                      {"width", c.options.width},
                                      {"height", c.options.height},
                                      {"color", c.color},
                                      {"brightness", 15},
                                      {"power", "on"},
                                      {"address", 1},
                                      {"controller", address(controller.port())}};
        EXPECT_EQ(found, expected) << found;
        const Outcome table = qmctl({"ping", "-c", address(controller.port())});
        EXPECT_EQ(table.status, 0);
        EXPECT_THAT(table.out, AllOf(HasSubstr(c.model), HasSubstr(c.color),
                                     HasSubstr(std::to_string(c.options.width) + " x ")));
    }
}

TEST(Ping, NothingThatAControllerSaysOfItselfReachesTheTerminalRaw) {
    // Series 0x99, firmware "ESC [ 2 J, 0xC3, quote", screen 128 x 32, colour 9, power 7.
    const ByteBuffer record =
        hex("99 01 1B 5B 32 4A C3 22 00 41 00 FE FF 05 80 00 20 00 09 10 07 07 00 00*9 00*20");
    const std::vector<ByteBuffer> answers{AnswerFrame{}.bytes(), AnswerFrame{.payload = record}.bytes()};
    {
        ScriptedPeer controller(ScriptedPeer::answering(answers));
        const Outcome outcome = qmctl({"ping", "-c", address(controller.port())});
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.out, AllOf(HasSubstr("?[2J?\""), HasSubstr("unknown (0x99)"),
                                       HasSubstr("unknown (9)"), HasSubstr("unknown (7)")));
        EXPECT_THAT(outcome.out, testing::Not(HasSubstr("\x1B")));
    }
    ScriptedPeer controller(ScriptedPeer::answering(answers));
    EXPECT_EQ(qmctl_json(controller.port(), {"ping"})["firmware"], "?[2J?\"");
}

TEST(Status, HostileRecordReachesNoTerminalAndIsNoTime) {
    // Power 7, current program "ESC [ 2 J", clock of month 0x13, ID of bytes above 0x7F.
    const ByteBuffer record =
        hex("07 01 09 0F FF FF 1B 5B 32 4A 02 03 01 01 24 20 13 01 25 61 61 06 FF FF FF 00*3 "
            "FF FF 00*2 01 FF*12 80*16");
    const std::vector<ByteBuffer> answers{AnswerFrame{}.bytes(),
                                          AnswerFrame{.cmd = 0x8F, .payload = record}.bytes()};
    ScriptedPeer controller(ScriptedPeer::answering(answers));
    const Outcome outcome = qmctl({"status", "-c", address(controller.port())});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("unknown (7)"), HasSubstr("unknown (9)"), HasSubstr("?[2J"),
                                   HasSubstr("not set"), HasSubstr("FF FF FF")));
    for (const char c : outcome.out) EXPECT_TRUE(c == '\n' || (c >= ' ' && c <= '~')) << int{c};
}

} // namespace
} // namespace qm::test
