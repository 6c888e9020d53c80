// Asking a controller who it is.
#include "child.h"
#include "hex.h"
#include "scripted_peer.h"
#include "simulator/Simulator.h"
#include "wire.h"

#include <gmock/gmock.h>

namespace qm::test {
namespace {

using sim::ScreenColor;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

TEST(Ping, TellsScriptsAndPeopleWhatTheControllerIs) {
    const struct {
        sim::Options options;
        const char *model, *color;
    } cases[] = {
        {{.type = 0x0262, .width = 128, .height = 32, .color = ScreenColor::dual}, "G6-T0 (0x62)", "double"},
        {{.type = 0x0166, .width = 64, .height = 16, .color = ScreenColor::full}, "G6-T3 (0x66)", "full"},
        {{.type = 0x0174, .width = 512, .height = 256, .color = ScreenColor::three}, "6H (0x74)", "three"},
        {{.type = 0x0151, .width = 32, .height = 8, .color = ScreenColor::single}, "G5-T1 (0x51)", "single"},
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
        EXPECT_THAT(outcome.out, Not(HasSubstr("\x1B")));
    }
    ScriptedPeer controller(ScriptedPeer::answering(answers));
    EXPECT_EQ(qmctl_json(controller.port(), {"ping"})["firmware"], "?[2J?\"");
}

} // namespace
} // namespace qm::test
