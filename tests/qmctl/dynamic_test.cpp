// Several areas, deletion and speech.
#include "fixture.h"

#include <gmock/gmock.h>

#include <sstream>

namespace qm::test {
namespace {

using testing::HasSubstr;

constexpr char kAreas[] = QM_EXAMPLES "/areas/areas.json";

using DynamicVerbs = ControllerTest;

TEST_F(DynamicVerbs, SendsTheAreasOfADescriptionAndDeletesThem) {
    EXPECT_EQ(json({"area", "send", kAreas})["areas"], (nlohmann::json{1, 2, 3}));
    EXPECT_EQ(ids_of(controller), (std::vector<unsigned>{1, 2, 3}));
    EXPECT_EQ(controller.dynamic_areas()[0].sound->text.size(), 44U);
    EXPECT_EQ(controller.payloads().size(), 2U) << "texts in one command, then pictures";
    json({"area", "rm", "2", "77"});
    EXPECT_EQ(ids_of(controller), (std::vector<unsigned>{1, 3}));
    json({"area", "send", "--with-program", "7,8", kAreas});
    for (const sim::ReceivedArea& area : controller.dynamic_areas())
        EXPECT_EQ(area.programs, (std::vector<std::uint16_t>{7, 8}));
    EXPECT_TRUE(controller.dynamic_areas()[0].sound) << "speech stays with its area";
    json({"area", "rm", "all"});
    EXPECT_TRUE(ids_of(controller).empty());
}

TEST_F(DynamicVerbs, SpeaksWithAndWithoutAnArea) {
    json({"text", "Hello", "--say", "Good morning", "--volume", "3"});
    EXPECT_EQ(controller.dynamic_areas().at(0).sound->volume, 3);
    json({"say", "--flag", "2", "Gate 4"});
    json({"sound", "update", "1=One", "200=Two=2", "--store", "1"});
    const auto voices = controller.state().voices;
    ASSERT_EQ(voices.size(), 3U);
    EXPECT_EQ(voices[1].id, 200);
    EXPECT_EQ(voices[1].sound.text, (ByteBuffer{'T', 'w', 'o', '=', '2'}));
    EXPECT_EQ(voices[2].flag, 2);
}

TEST_F(DynamicVerbs, TalksToGeneration5InItsOwnForm) {
    const sim::Simulator five({.type = 0x0051});
    qmctl_json(five.port(), {"text", "Hello", "--with-program", "all"});
    ASSERT_EQ(ids_of(five), std::vector<unsigned>{0});
    EXPECT_EQ(five.payloads().back()[9], 0) << "the number of its only area comes at once";
    EXPECT_FALSE(five.dynamic_areas()[0].play_at_once);
    qmctl_json(five.port(), {"area", "rm", "0"});
    EXPECT_TRUE(ids_of(five).empty());
    const Outcome outcome = qmctl({"-c", address(five.port()), "text", "x", "--say", "y"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("speech needs a controller of generation 6"));
}

TEST_F(DynamicVerbs, RefuseWrongArgumentsBeforeTheyConnect) {
    for (const Words& arguments :
         {Words("area rm"), Words("area rm 256"), Words("area rm 1 all"), Words{"say", ""},
          Words("sound update 1"), Words("sound update 256=x"), Words("text x --with-program 1,x")})
        EXPECT_EQ(run(arguments).status, 1) << testing::PrintToString(arguments);
    EXPECT_EQ(qmctl("--controllers /no/such/file ping").status, 1);
    const std::pair<std::string, const char*> areas[] = {
        {R"("id": 256)", "areas[0]: a dynamic area has a number from 0 to 255"},
        {R"("id": 1, "sound": {"text": ")" + std::string(65516, 'x') + R"("})", "at most 65515 bytes"}};
    for (const auto& [area, words] : areas) {
        const TemporaryFile file("areas.json", R"({"id": 1, "areas": [{"text": "x", )" + area + "}]}");
        const Outcome outcome = run({"area", "send", file.path()});
        EXPECT_EQ(outcome.status, 1);
        EXPECT_THAT(outcome.err, HasSubstr(words));
    }
    EXPECT_EQ(controller.connections(), 0U);
}

TEST_F(DynamicVerbs, CheckAllAreasBeforeTheFirstIsSent) {
    const struct {
        std::uint16_t type;
        const char *options, *area, *words;
    } cases[] = {
        {0x0051, "", R"("text": "x", "sound": {"text": "y"})", "speech needs"},
        {0x0262, "--with-program 7", R"("pictures": ["P"], "sound": {"text": "y"})", "cannot be related"},
        {0x0262, "", R"("text": "x", "transparency": 1)", "areas[1]: a dynamic area has no background_flag"},
        {0x0262, "", R"("text": "x", "rect": [64, 0, 65, 8])",
         "areas.json: areas[1].rect: reaches beyond the screen of 128 x 32 pixels"}};
    for (const auto& c : cases) {
        const sim::Simulator target({.type = c.type});
        std::string area = c.area;
        if (const auto place = area.find("\"P\""); place != area.npos)
            area.replace(place + 1, 1, QM_EXAMPLES "/areas/logo.png");
        const TemporaryFile file("areas.json",
                                 std::string(R"({"id": 1, "areas": [{"id": 1, "text": "good"}, {"id": 2, )")
                                     .append(area)
                                     .append("}]}"));
        const Outcome outcome =
            qmctl(Words{"-c", address(target.port()), "area", "send", file.path()} + c.options);
        EXPECT_EQ(outcome.status, 1) << c.words;
        EXPECT_THAT(outcome.err, HasSubstr(c.words));
        EXPECT_TRUE(target.payloads().empty()) << "exit status 1 promises that nothing was sent";
    }
}

} // namespace
} // namespace qm::test
