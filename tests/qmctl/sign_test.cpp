// Controllers made what the description of their sign says.
#include "sign_fixture.h"

#include <gmock/gmock.h>

namespace qm::test {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr int kSomethingToDo = 3;

TEST_F(Sign, MistakeIsNamedByItsField) {
    folder.program("one.json", 1, 1);
    folder.program("other.json", 1, 2);
    folder.program("two.json", 2, 1);
    folder.program("far.json", 1002, 1);
    const struct {
        const char *json, *error;
    } cases[] = {
        {R"({"prune": true, "brightness": 8})", "prune needs a playlist"},
        {R"({"clock": {"shift": 18446744073709551615}})", "clock.shift: expected a whole number from -86400"},
        {R"({"playlist": ["none.json"]})", "playlist[0]: expected a file that can be read"},
        {R"({"playlist": [{"week": 3}]})", "playlist[0]: needs program or variants"},
        {R"({"playlist": [{"program": "one.json", "weeks": 3}]})", "playlist[0].weeks: unknown field"},
        {R"({"playlist": [{"program": "one.json", "play_periods": ["8-9"]}]})",
         "playlist[0].play_periods[0]: expected HH:MM-HH:MM"},
        {R"({"playlist": ["one.json", "other.json"]})", "playlist[1]: P001 does not come after P001"},
        {R"({"playlist": ["two.json", "one.json"]})", "playlist[1]: P001 does not come after P002"},
        {R"({"playlist": ["far.json", "two.json"]})", "playlist[1]: P002 has the data file of another"},
        {R"({"playlist": [{"variants": ["one.json", "two.json"]}]})",
         "playlist[0]: variants have one number, not 1 and 2"},
        {R"({"power": {"timer": ["07:30-22:00", "21:00-23:00"]}})", "power.timer: expected periods that do"},
        {R"({"power": {"timer": ["7-8"]}})", "power.timer[0]: expected the times of switching on and off"},
        {R"({"brightness": 256})", "brightness: expected a whole number from 0 to 255"},
        {R"({"brightness": [1, 2]})", "brightness: expected a list of 48"},
        {R"({"clock": {"zone": "Europe/Nowhere"}})", "clock.zone: expected a time zone that this host knows"},
        {R"({"clock": {"shift": 90000}})", "clock.shift: expected a whole number from -86400 to 86400"},
        {R"({"areas": "one.json", "prune": 1})", "prune: expected true or false"},
        {R"({"controllers": ["tag:none"]})", "controllers: expected a list of controllers for 'tag:none'"},
    };
    for (const auto& c : cases) {
        const Outcome outcome = qmctl({"apply", folder.write("sign.json", c.json)});
        EXPECT_EQ(outcome.status, 1) << c.json;
        EXPECT_THAT(outcome.err, HasSubstr(c.error)) << c.json;
    }
}

TEST_F(Sign, ApplyWritesWhatDiffersAndNothingTheSecondTime) {
    const sim::Simulator controller;
    folder.program("one.json", 1, 2);
    folder.program("two.json", 2, 1);
    const std::string sign = folder.write("sign.json", R"({"playlist": ["one.json", "two.json"]})");
    EXPECT_EQ(planned(controller, sign, kSomethingToDo)["D001"], "new");
    EXPECT_EQ(apply(controller, sign, {"--dry-run"}).status, kSomethingToDo);
    EXPECT_THAT(controller.files(), IsEmpty());
    EXPECT_THAT(apply(controller, sign).out, HasSubstr("D001, P001, D002, P002"));
    EXPECT_THAT(controller.program_errors(), IsEmpty());
    EXPECT_EQ(controller.state().program, "P001");

    const auto requests = controller.requests(), connections = controller.connections();
    EXPECT_THAT(apply(controller, sign).out, HasSubstr("nothing"));
    EXPECT_EQ(controller.connections() - connections, 3U) << "ping, both listings, end of transfer";
    EXPECT_EQ(controller.requests() - requests, 9U) << "a handshake each";

    folder.write("two.json", R"({"id": 2, "areas": [{"id": 0, "text": "Hi"}]})");
    auto states = planned(controller, sign, kSomethingToDo);
    EXPECT_EQ(states["P001"] + states["D001"], "unchangedunchanged");
    EXPECT_EQ(states["D002"], "changed");
    EXPECT_THAT(apply(controller, sign).out, AllOf(HasSubstr("D002"), Not(HasSubstr("001"))));
    EXPECT_EQ(planned(controller, sign, 0)["D002"], "unchanged");
}

TEST_F(Sign, EntryReplacesDaysAndNumberAndPrunesWhenItMay) {
    const sim::Simulator controller;
    folder.program("one.json", 7, 1, R"("week": 1, )");
    folder.program("two.json", 3, 1);
    const std::string entry = R"({"playlist": [{"program": "one.json", "week": 5}, "two.json"])";
    EXPECT_EQ(apply(controller, folder.write("sign.json", entry + R"(, "number": true})")).status, 0);
    EXPECT_THAT(files_of(controller), testing::SizeIs(4));
    EXPECT_EQ(controller.file("P001")->data.at(20), 5) << "days of the week";

    const std::string other = folder.write("other.json", R"({"playlist": ["two.json"]})");
    EXPECT_EQ(apply(controller, other).status, 0);
    EXPECT_EQ(planned(controller, other, 0)["P001"], "kept, not in the sign");
    const std::string pruned = folder.write("other.json", R"({"playlist": ["two.json"], "prune": true})");
    EXPECT_EQ(planned(controller, pruned, kSomethingToDo)["D002"], "to be deleted");
    EXPECT_EQ(apply(controller, pruned).status, 0);
    EXPECT_THAT(planned(controller, pruned, 0),
                ElementsAre(std::pair("D003", "unchanged"), std::pair("P003", "unchanged")));
}

TEST_F(Sign, VariantIsTheFirstThatFits) {
    const sim::Simulator five({.type = 0x0154}), full({.type = 0x0166, .color = sim::ScreenColor::full}),
        small({.width = 64});
    folder.program("five.json", 1, 1, R"("generation": 5, )");
    folder.program("full.json", 1, 2, R"("screen": {"color": "full", "size": [128, 32]}, )");
    const std::string sign =
        folder.write("sign.json", R"({"playlist": [{"variants": ["five.json", "full.json"]}]})");
    const std::string all = address(five.port()) + "," + address(full.port()) + "," + address(small.port());
    const Outcome outcome = qmctl({"-c", all, "apply", sign});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.out, HasSubstr("playlist[0]: no variant is for a controller of generation 6 with "
                                       "64 x 32 pixels, double"));
    EXPECT_THAT(files_of(small), IsEmpty());
    const std::string only = folder.write("only.json", R"({"playlist": [{"variants": ["full.json"]}]})");
    EXPECT_THAT(apply(small, only).err, HasSubstr("only.json: playlist[0]: no variant is for"));
    EXPECT_THAT(files_of(five), testing::SizeIs(1));
    EXPECT_EQ(planned(five, sign, 0)["P001"], "unchanged");
    EXPECT_GT(files_of(full)["D001"].size(), 2 * 128 * 32 * 2U);
}

TEST_F(Sign, SettingsAreSetWhenTheyDifferAndAreasAreShown) {
    const sim::Simulator controller;
    folder.write("over.json", R"({"id": 1, "areas": [{"id": 4, "text": "Closed"}]})");
    const std::string list = folder.write("controllers", "shop " + address(controller.port()) + "\n");
    const std::string sign = folder.write(
        "sign.json", R"({"areas": "over.json", "brightness": 8, "power": {"timer": ["00:00-23:59"]},
                         "clock": {"zone": "UTC", "shift": -3600}})");
    EXPECT_THAT(planned(controller, sign, kSomethingToDo),
                ElementsAre(std::pair("brightness", "differs"), std::pair("clock", "differs"),
                            std::pair("timer", "differs")));
    EXPECT_EQ(qmctl({"--controllers", list, "apply", sign}).status, 0);
    EXPECT_THAT(planned(controller, sign, 0),
                ElementsAre(std::pair("brightness", "same"), std::pair("clock", "same"),
                            std::pair("timer", "unknown")));
    const auto state = controller.state();
    EXPECT_EQ(state.brightness_level, 8U);
    EXPECT_EQ(state.timing.size(), 1U);
    const auto utc = std::chrono::system_clock::now().time_since_epoch() - std::chrono::hours(1);
    EXPECT_LE(std::chrono::abs(state.clock.time_since_epoch() - utc), std::chrono::seconds(3));
    EXPECT_THAT(controller.dynamic_areas(), testing::SizeIs(1));
    EXPECT_EQ(
        apply(controller, folder.write("sign.json", R"({"brightness": "sensor", "power": "off"})")).status,
        0);
    EXPECT_FALSE(controller.state().power);
    EXPECT_EQ(controller.state().brightness.mode, sim::BrightnessMode::by_sensor);
}

TEST_F(Sign, AreasThatDoNotFitKeepEverythingFromBeingSent) {
    const sim::Simulator controller({.width = 64});
    folder.program("one.json", 1, 1);
    folder.write("over.json", R"({"id": 1, "areas": [{"id": 4, "rect": [0, 0, 65, 16], "text": "x"}]})");
    const Outcome outcome =
        apply(controller, folder.write("sign.json", R"({"playlist": ["one.json"], "areas": "over.json"})"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("over.json: areas[0].rect: reaches beyond the screen of 64 x 32"));
    EXPECT_THAT(controller.files(), IsEmpty());
}

TEST_F(Sign, ProgramsAreSentListedAndRemovedTogether) {
    const sim::Simulator controller;
    const auto program = [&](const Words& words) {
        return qmctl_json(controller.port(), Words{"program"} + words);
    };
    const std::string one = folder.program("one.json", 1, 1), two = folder.program("two.json", 2, 2),
                      far = folder.program("far.json", 1002, 1);
    EXPECT_THAT(qmctl({"-c", address(controller.port()), "program", "send", two, far}).err,
                HasSubstr("far.json: id: 1002 has a file in common with " + two));
    EXPECT_EQ(program({"send", one, two})["programs"], (nlohmann::json{"P001", "P002"}));
    const auto listed = program({"ls"})["programs"];
    ASSERT_EQ(listed.size(), 2U);
    EXPECT_EQ(listed[1]["name"], "P002");
    EXPECT_EQ(listed[1]["files"][1]["name"], "D002");
    EXPECT_EQ(listed[1]["size"], controller.file("P002")->data.size() + controller.file("D002")->data.size());
    program({"send", far});
    EXPECT_EQ(program({"rm", "1002"})["removed"], nlohmann::json{"1002"}) << "its data is also that of P002";
    EXPECT_EQ(program({"rm", "1", "P002"})["ok"], true);
    EXPECT_THAT(controller.files(), IsEmpty());
}

TEST_F(Sign, PreviewDrawsProgramsAndFilmsWhatPlays) {
    folder.program("one.json", 1, 1);
    folder.write("two.json", R"({"id": 2, "play_periods": ["10:00-11:00"], "style": 1, "time_span": 1,
                                 "areas": [{"id": 0, "rect": [32, 8, 32, 8], "pictures": ["picture.png"]}]})");
    const std::string sign = folder.write("sign.json", R"({"playlist": ["one.json", "two.json"]})");
    const std::string out = std::filesystem::path(sign).replace_filename("out");
    const auto film = [&](const char* at) {
        const Outcome outcome = qmctl(
            {"preview", "--size", "64x16", "--film", "30s", "--scale", "2", "--at", at, "-o", out, sign});
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_TRUE(std::filesystem::exists(out + "/P002.png"));
        std::ifstream file(out + "/sign.gif", std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(file), {});
    };
    const std::string closed = film("2026-12-24 09:00"), open = film("2026-12-24 10:00");
    EXPECT_EQ(open.substr(0, 10), std::string("GIF89a\x80\0\x20\0", 10)) << "128 x 32 pixels";
    EXPECT_NE(open, closed) << "the second program plays from ten o'clock on";
    EXPECT_EQ(qmctl({"preview", "--film", "1h", sign}).status, 1);
}

TEST_F(Sign, GoesToItsOwnControllersUnlessOthersAreNamed) {
    const sim::Simulator own, other;
    const std::string sign =
        folder.write("sign.json", R"({"brightness": 3, "controllers": [")" + address(own.port()) + "\"]}");
    EXPECT_EQ(qmctl({"apply", sign}).status, 0);
    EXPECT_EQ(own.state().brightness_level, 3U);
    const auto requests = own.requests();
    EXPECT_EQ(apply(other, sign).status, 0);
    EXPECT_EQ(other.state().brightness_level, 3U);
    EXPECT_EQ(own.requests(), requests);
}

} // namespace
} // namespace qm::test
