// What becomes of the description of a program: files, pictures, a screen, or an error that says where.
#include "fixture.h"
#include "read_png.h"
#include "simulator/playback/program_parser.h"

#include <cairo.h>
#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>

namespace qm::test {
namespace {

namespace fs = std::filesystem;
using sim::Rgb;
using testing::AllOf;
using testing::HasSubstr;

ByteBuffer content_of(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void write(const fs::path& path, const ByteBuffer& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

void write(const fs::path& path, const std::string& text) { std::ofstream(path, std::ios::binary) << text; }

std::pair<int, int> png_size(const fs::path& path) {
    const sim::Image image = read_png(path);
    return {image.width, image.height};
}

// An empty current folder, and descriptions in its subfolder "in" with a picture beside them.
class ProgramVerbs : public testing::Test {
  protected:
    ProgramVerbs() : m_before(fs::current_path()) {
        std::string pattern = testing::TempDir() + "qmctl_program_XXXXXX";
        m_folder = mkdtemp(pattern.data());
        fs::current_path(m_folder);
        fs::create_directory("in");
        write("in/picture.png", hex(kPicture));
    }
    ~ProgramVerbs() override {
        fs::current_path(m_before);
        fs::remove_all(m_folder);
    }

    static Outcome program(const std::string& verb, const std::string& json, const Words& options = {}) {
        write("in/it.json", json);
        return qmctl(Words{"program", verb, "in/it.json"} + options);
    }

    // A whole description around an area's, or with more fields in front.
    static std::string around(const std::string& area, const std::string& more = "") {
        return R"({"generation": 6, "screen": {"size": [64, 16], "color": "double"}, "id": 7, )" + more +
               R"("areas": [{"id": 0, )" + area + "}]}";
    }
    static std::string with(const std::string& more) { return around(R"("text": "Hi")", more + ", "); }

  private:
    fs::path m_folder, m_before;
};

TEST_F(ProgramVerbs, MistakeIsNamedByItsField) {
    ByteBuffer cut = hex(kPicture);
    cut.resize(40);
    write("in/cut.png", cut);
    write("in/text.png", std::string("no picture"));
    write("in/text.ttf", std::string("no font"));
    const struct {
        std::string json;
        const char* error;
    } cases[] = {
        {around(R"("text": "x", "color": "redd")"), "areas[0].color: expected one of black, red"},
        {around(R"("text": "x", "color": "#12345G")"), R"(#RRGGBB, not "#12345G")"},
        {around(R"("text": "x", "colour": "red")"), "areas[0].colour: unknown field; known are id, rect"},
        {around(R"("text": "x", "size": 0)"), "areas[0].size: expected a whole number from 1 to 1000, not 0"},
        {around(R"("text": "x", "size": 1.5)"), "areas[0].size: expected a whole number"},
        {around(R"("text": "x", "speed": -1)"), "areas[0].speed: expected a whole number from 0 to 255"},
        {around(R"("text": "x", "stay": 18446744073709551616)"), "areas[0].stay: expected a whole number"},
        {around(R"("text": "x", "bold": "yes")"), R"(areas[0].bold: expected true or false, not "yes")"},
        {around(R"("text": "x", "mode": "up")"), "areas[0].mode: expected static, left, right, run or"},
        {around(R"("text": "x", "align": "middle")"), "areas[0].align: expected one of left, center, right"},
        {around(R"("text": "x", "rect": [0, 0, 64])"),
         "areas[0].rect: expected a list of 4, not a list of 3"},
        {around(R"("text": "x", "rect": [0, 0, 0, 16])"), "areas[0].rect[2]: expected a whole number from 1"},
        {around(R"("text": "x", "rect": [1, 0, 64, 16])"),
         "areas[0].rect: reaches beyond the screen of 64 x 16"},
        {around(R"("text": "")"), "areas[0].text: expected a text that is not empty"},
        {around(R"("text": "a\u0000b")"), "areas[0].text: expected a text without a zero byte"},
        {around(R"("text": "x", "texts": ["y"])"), "areas[0].texts: text is given, too"},
        {around(R"("texts": ["x", 2])"), "areas[0].texts[1]: expected a text"},
        {around(R"("size": 9)"), "areas[0]: needs text, texts, pictures, digital or analog"},
        {around(R"("text": "x", "font": "none.otb")"), "areas[0].font: expected a file that can be read"},
        {around(R"("text": "x", "font": "text.ttf")"), "areas[0].font: expected a font file"},
        {around(R"("pictures": ["none.png"])"), "areas[0].pictures[0]: expected a file that can be read"},
        {around(R"("pictures": ["text.png"])"), "text.png is no picture of a known kind"},
        {around(R"("pictures": ["picture.png"], "fit": "fill")"),
         "areas[0].fit: expected one of none, contain"},
        {around(R"("pictures": ["picture.png", {"file": "cut.png"}])"), "areas[0].pictures[1].file: "},
        {around(R"("pictures": [{"mode": 1}])"), "areas[0].pictures[0].file: is missing"},
        {around(R"("text": "x", "rect": [0, 0, 64, 4], "border": {"picture": "picture.png"})"),
         "areas[0].border.picture: a border of 2 pixels leaves no room in 64 x 4"},
        {around(R"("text": "x", "sound": {"text": "x", "volume": 256})"), "areas[0].sound.volume: expected"},
        {around(R"("text": "x"}, {"id": 0, "text": "y")"), "areas[1].id: another area has the number 0"},
        {around(R"("digital": {})"), "areas[0].digital: needs date, week or time"},
        {around(R"("digital": {"date": "2024.12.31"})"), "areas[0].digital.date: expected one of 2024-12-31"},
        {around(R"("digital": {"week": "Sunday"})"), "areas[0].digital.week: expected one of Monday, Mon"},
        {around(R"("digital": {"time": "23:59"}, "analog": {})"), "areas[0].analog: digital is given, too"},
        {around(R"("digital": {"time": "23:59"}, "text": "x")"), "areas[0].text: does not go with a clock"},
        {around(R"("analog": {}, "font": "DejaVu Sans")"), "areas[0].font: does not go with a clock"},
        {around(R"("analog": {"pivot": [1]})"), "areas[0].analog.pivot: expected a list of 2"},
        {around(R"("analog": {"picture": "cut.png"})"), "areas[0].analog.picture: "},
        {around(R"("analog": {"hour": {"color": "#FF0000"}})"), "areas[0].analog.hour.color: #RRGGBB is for"},
        {around(R"("analog": {"hour": {"length": 256}})"), "areas[0].analog.hour.length: expected a whole"},
        {around(R"("text": "x", "battle": "2024-12-31 23:59")"), "areas[0].battle: needs digital or analog"},
        {around(R"("analog": {}, "battle": "2023-02-29 00:00")"), "areas[0].battle: expected a date"},
        {around(R"("analog": {}, "battle": "2024-02-29 24:00")"), "areas[0].battle: expected a time of day"},
        {with(R"("border": {"picture": "cut.png"})"), "border.picture: "},
        {with(R"("background": {})"), "background: needs either color or pictures"},
        {with(R"("background": {"color": "red", "pictures": ["picture.png"]})"), "background: needs either"},
        {with(R"("play_periods": ["08:00-12:30", "8-9"])"), "play_periods[1]: expected HH:MM-HH:MM"},
        {with(R"("play_periods": ["08:00-24:00"])"), "play_periods[0]: expected HH:MM-HH:MM"},
        {with(R"("play_periods": [1,2,3,4,5,6,7,8,9])"), "play_periods: expected a list of 1 to 8"},
        {with(R"("life_span": {"from": "2023-02-29", "to": "2024-01-01"})"),
         "life_span.from: expected a date"},
        {with(R"("life_span": {"from": "2024-02-02", "to": "2024-02-01"})"),
         "life_span: ends before it begins"},
        {with(R"("play_times": 256)"), "play_times: expected a whole number from 0 to 255, not 256"},
        {with(R"("play_times": 1, "play_times": 2)"), R"("play_times" stands twice)"},
        {R"({"generation": 7, "id": 1, "areas": []})", "generation: expected a whole number from 5 to 6"},
        {R"({"areas": []})", "id: is missing"},
        {R"({"id": 10000, "areas": []})", "id: expected a whole number from 0 to 9999"},
        {R"({"id": 1, "screen": {"color": "gray"}, "areas": []})", "screen.color: expected one of single"},
        {R"({"id": 1, "generation": 5, "screen": {"type": "0x0262"}, "areas": []})",
         "screen.type: a controller of generation 6, but generation says 5"},
        {"[]", "expected an object"},
        {"{\n  \"id\": 1,\n  \"areas\": [}\n", "line 3, column 13"},
        {"", "line 1, column 1"},
        {"{\"id\": \"\xFF\"}", "invalid"},
    };
    sim::Simulator controller({.width = 64, .height = 16});
    for (const auto& c : cases) {
        for (const char* verb : {"build", "preview", "send"}) {
            const Outcome outcome = program(verb, c.json, {"-c", address(controller.port())});
            EXPECT_EQ(outcome.status, 1) << verb << " " << c.json << outcome.err;
            EXPECT_THAT(outcome.err, AllOf(HasSubstr("in/it.json: "), HasSubstr(c.error))) << c.json;
        }
        EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 1) << c.json;
        EXPECT_TRUE(controller.files().empty()) << c.json;
    }
}

const char* const kWhole = R"({
  "id": 7, "screen": {"size": [64, 16], "color": "double"},
  "play_times": 2, "time_span": 60, "priority": 5, "week": 62,
  "life_span": {"from": "2024-12-31", "to": "2031-01-09"},
  "play_periods": ["08:00-12:30", "22:15:10-06:00:59"],
  "border": {"picture": "picture.png", "style": 3, "speed": 4, "step": 5},
  "areas": [
    {"id": 4, "rect": [2, 2, 40, 12], "text": "One two three four", "mode": "run", "speed": 9, "size": 6,
     "pictures": ["picture.png", {"file": "picture.png", "mode": 7, "stay": 65535, "repeat": 2}]},
    {"id": 3, "rect": [42, 2, 20, 12], "pictures": ["picture.png"],
     "border": {"picture": "picture.png", "style": 1, "speed": 2, "step": 6}}]})";

// What the controller of a screen of two colours finds in the files that were written.
sim::StoredProgram built(bool six, const fs::path& folder = ".", const std::string& number = "007") {
    using sim::TransferMode, sim::ScreenColor;
    const ByteBuffer file = content_of(folder / ("P" + number));
    sim::ParsedProgram parsed = six ? sim::parse_program(file, content_of(folder / ("D" + number)),
                                                         {TransferMode::planes32, ScreenColor::dual})
                                    : sim::parse_program(file, {TransferMode::planes8, ScreenColor::dual});
    if (const auto* error = std::get_if<std::string>(&parsed)) {
        ADD_FAILURE() << *error;
        return {};
    }
    return std::get<sim::StoredProgram>(std::move(parsed));
}

void expect_pages(const sim::StoredProgram& program) {
    ASSERT_EQ(program.areas.size(), 2U);
    const sim::ProgramArea& first = program.areas[0];
    EXPECT_EQ(first.rect, (sim::Rect{2, 2, 40, 12}));
    ASSERT_GT(first.pages.size(), 3U);
    const sim::Page &text = first.pages[0], &usual = *(first.pages.end() - 2), &own = first.pages.back();
    for (const sim::Page* page : {&text, &usual}) {
        EXPECT_EQ(page->display_mode, 4);
        EXPECT_EQ(page->speed, 9);
        EXPECT_EQ(page->stay_time, 0);
    }
    EXPECT_EQ(own.display_mode, 7);
    EXPECT_EQ(own.speed, 9);
    EXPECT_EQ(own.stay_time, 65535);
    EXPECT_EQ(own.repeat_time, 2);
    const sim::BorderPattern border = program.areas[1].border.value();
    EXPECT_EQ((std::array{border.style, border.speed, border.move_step, border.unit_length}),
              (std::array<std::uint8_t, 4>{1, 2, 6, 2}));
    EXPECT_EQ(program.areas[1].pages.at(0).stay_time, 300);
}

TEST_F(ProgramVerbs, BuildWritesBothFilesOfGeneration6) {
    const Outcome outcome = program("build", kWhole, {"-o", "out/deep", "--generation", "6", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const ByteBuffer file = content_of("out/deep/P007"), data = content_of("out/deep/D007");
    EXPECT_THAT(Bytes(file).first(56),
                is_hex("00 50 30 30 37 00 01 02 3C 00 00 00 00 00 00 00 00 00 00 00 3E "
                       "24 20 12 31 31 20 01 09  01 08 00 00 0C 1E 00 16 0F 0A 06 00 3B "
                       "01 03 04 05 03 02 00 00*7"));
    expect_pages(built(true, "out/deep"));

    const auto json = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(json["generation"], 6);
    EXPECT_EQ(json["files"][0], (nlohmann::json{{"name", "D007"},
                                                {"type", 9},
                                                {"size", data.size()},
                                                {"crc32", ByteReader(Bytes(data).last(4)).u32()}}));
    EXPECT_EQ(json["files"][1], (nlohmann::json{{"name", "P007"},
                                                {"type", 0},
                                                {"size", file.size()},
                                                {"crc32", ByteReader(Bytes(file).last(4)).u32()}}));
}

TEST_F(ProgramVerbs, BuildWritesTheFileOfGeneration5AndNothingElse) {
    const Outcome outcome = program("build", kWhole, {"--generation", "5"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(Bytes(content_of("P007")).first(39),
                is_hex("00 50 30 30 37 00 01 02 3C 00 3E 24 20 12 31 31 20 01 09 "
                       "01 08 00 00 0C 1E 00 16 0F 0A 06 00 3B  01 03 04 05 02 00 00"));
    expect_pages(built(false));
    EXPECT_EQ(std::distance(fs::directory_iterator("."), {}), 2) << "only in and P007";
}

TEST_F(ProgramVerbs, WhatGeneration5DoesNotHaveIsLeftOutWithANote) {
    const std::string json =
        around(R"("text": "x", "sound": {"text": "x"})", R"("background": {"color": "red"}, )");
    for (const std::string generation : {"5", "6"}) {
        const Outcome outcome = program("build", json, {"--generation", generation, "--json"});
        ASSERT_EQ(outcome.status, 0) << outcome.err;
        const bool left_out = generation == "5";
        EXPECT_EQ(outcome.err.find("background is left out") != std::string::npos, left_out);
        EXPECT_EQ(outcome.err.find("areas[0].sound is left out") != std::string::npos, left_out);
        EXPECT_EQ(nlohmann::json::parse(outcome.out).contains("notes"), left_out);
        EXPECT_EQ(fs::exists("D007"), !left_out);
        if (left_out) continue;
        const sim::StoredProgram parsed = built(true);
        EXPECT_TRUE(parsed.background);
        EXPECT_EQ(parsed.areas.at(0).type, sim::AreaType::background);
        EXPECT_EQ(parsed.areas.at(1).sound.value().text, ByteBuffer{'x'});
    }
}

TEST_F(ProgramVerbs, PreviewDrawsEveryPageAndAnOverview) {
    const Outcome outcome = program("preview", kWhole, {"--generation", "6", "-o", "out", "--json"});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const auto areas = nlohmann::json::parse(outcome.out)["areas"];
    ASSERT_EQ(areas.size(), 2U);
    EXPECT_EQ(areas[1]["pages"], nlohmann::json({"area-3-page-1.png"}));
    for (const auto& page : areas[0]["pages"])
        EXPECT_EQ(png_size(fs::path("out") / page.get<std::string>()), std::pair(40, 12)) << page;
    EXPECT_EQ(png_size("out/area-3-page-1.png"), std::pair(16, 8)) << "inside its border";
    const auto [width, height] = png_size("out/overview.png");
    EXPECT_EQ(width, 64 * 4);
    EXPECT_EQ(height, static_cast<int>(areas[0]["pages"].size()) * (16 * 4 + 12) - 12);
}

// 16 x 3 pixels of grey levels and colours around those at which LEDs begin to shine, opaque, half
// transparent and nearly so.
void write_colors(const fs::path& path) {
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> picture(
        cairo_image_surface_create(CAIRO_FORMAT_ARGB32, 16, 3), cairo_surface_destroy);
    const auto context =
        std::unique_ptr<cairo_t, decltype(&cairo_destroy)>(cairo_create(picture.get()), cairo_destroy);
    const double alphas[] = {1, 0.5, 0.25}, levels[] = {96 / 255.0, 97 / 255.0};
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 16; ++x) {
            const double level = x < 8 ? 1 : levels[x % 2];
            cairo_set_source_rgba(context.get(), x & 1 ? level : 0, x & 2 ? level : 0, x & 4 ? level : 0,
                                  alphas[y]);
            cairo_rectangle(context.get(), x, y, 1, 1);
            cairo_fill(context.get());
        }
    ASSERT_EQ(cairo_surface_write_to_png(picture.get(), path.c_str()), CAIRO_STATUS_SUCCESS);
}

// Every cell-th pixel, from the middle of the first cell on.
sim::Image sampled(const sim::Image& large, int cell) {
    sim::Image image(large.width / cell, large.height / cell);
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x)
            image.set(x, y, large.at(x * cell + cell / 2, y * cell + cell / 2));
    return image;
}

TEST_F(ProgramVerbs, PreviewIsWhatThePanelShows) {
    write_colors("in/colors.png");
    const std::string json = R"({"id": 1, "border": {"picture": "colors.png", "step": 0},
        "background": {"pictures": ["colors.png"]},
        "areas": [{"id": 0, "rect": [4, 4, 20, 8], "pictures": ["colors.png"]},
                  {"id": 1, "rect": [30, 4, 30, 9], "text": "Hi", "size": 6, "color": "cyan"}]})";
    const struct {
        std::uint16_t type;
        sim::ScreenColor color;
    } screens[] = {{0x0262, sim::ScreenColor::single},
                   {0x0262, sim::ScreenColor::dual},
                   {0x0262, sim::ScreenColor::three},
                   {0x0166, sim::ScreenColor::full}};
    for (const auto& screen : screens) {
        const sim::Simulator controller(
            {.type = screen.type, .width = 64, .height = 16, .color = screen.color});
        const Words at{"-c", address(controller.port())};
        ASSERT_EQ(program("send", json, at).status, 0);
        const Outcome outcome = program("preview", json, Words("-o out") + at);
        ASSERT_EQ(outcome.status, 0) << outcome.err;
        const sim::Image panel = controller.screen(), overview = sampled(read_png("out/overview.png"), 4);
        EXPECT_EQ(overview, panel) << static_cast<int>(screen.color);
        const sim::Image area = read_png("out/area-0-page-1.png"), text = read_png("out/area-1-page-1.png");
        for (int y = 0; y < 8; ++y)
            for (int x = 0; x < 20; ++x) {
                EXPECT_EQ(area.at(x, y), panel.at(4 + x, 4 + y)) << x << "," << y;
                EXPECT_EQ(text.at(x, y), panel.at(30 + x, 4 + y)) << x << "," << y;
            }
    }
}

TEST_F(ProgramVerbs, PreviewShowsAnAnalogClockWithItsHands) {
    using namespace std::chrono;
    const std::string json = R"({"id": 1, "areas": [{"id": 0, "rect": [8, 2, 40, 30], "analog":
        {"pivot": [21, 14], "background": "blue", "hour": {"width": 3}, "minute": {"color": "cyan"}}}]})";
    for (const auto color : {sim::ScreenColor::single, sim::ScreenColor::dual, sim::ScreenColor::three}) {
        const sim::Simulator controller(
            {.type = 0x0262, .width = 48, .height = 32, .color = color, .clock = [] {
                 return local_days(2024y / December / 31) + 10h + 8min + 35s;
             }});
        const Words at{"-c", address(controller.port())};
        ASSERT_EQ(program("send", json, at).status, 0);
        ASSERT_EQ(program("preview", json, Words("-o out") + at).status, 0);
        EXPECT_EQ(sampled(read_png("out/overview.png"), 4), controller.screen()) << static_cast<int>(color);
    }
}

TEST_F(ProgramVerbs, WhatTheDescriptionLeavesOpenIsAskedOfTheController) {
    sim::Simulator controller({.type = 0x0051, .width = 48, .height = 16});
    const std::string json = R"({"id": 1, "areas": [{"id": 0, "text": "Hi"}]})";
    const Outcome outcome = program("build", json, {"--json", "-c", address(controller.port())});
    ASSERT_EQ(outcome.status, 0) << outcome.err;
    const auto result = nlohmann::json::parse(outcome.out);
    EXPECT_EQ(result["generation"], 5);
    EXPECT_EQ(result["screen"], "double");
    EXPECT_EQ(built(false, ".", "001").areas.at(0).rect.width, 48);
}

TEST_F(ProgramVerbs, SendWritesWhatBuildBuilds) {
    for (const int type : {0x0262, 0x0051}) {
        sim::Simulator controller({.type = static_cast<std::uint16_t>(type), .width = 64, .height = 16});
        const Outcome sent = program("send", kWhole, {"--json", "-c", address(controller.port())});
        ASSERT_EQ(sent.status, 0) << sent.err;
        const auto listed = qmctl_json(controller.port(), {"fs", "ls"})["files"];
        const auto said = nlohmann::json::parse(sent.out)["files"];
        EXPECT_THAT(said, testing::Contains(listed.at(0))) << "name, type, size and CRC";
        ASSERT_EQ(program("build", kWhole, {"--type", std::to_string(type)}).status, 0);
        for (const sim::StoredFile& file : controller.files()) {
            EXPECT_EQ(file.data, content_of(file.name)) << file.name;
            EXPECT_EQ(file.type, file.name == "D007" ? 9 : 0);
        }
        EXPECT_EQ(controller.files().size(), type == 0x0262 ? 2U : 1U);
    }
}

TEST_F(ProgramVerbs, SentProgramIsOnTheScreen) {
    const std::string json = around(R"("rect": [5, 3, 10, 10], "pictures": ["picture.png"])",
                                    R"("border": {"picture": "picture.png", "step": 0}, )");
    for (const int type : {0x0262, 0x0051}) {
        sim::Simulator controller({.type = static_cast<std::uint16_t>(type), .width = 64, .height = 16});
        const std::string generation = type == 0x0051 ? "5" : "6";
        const Outcome sent =
            program("send", json, {"-c", address(controller.port()), "--generation", generation});
        ASSERT_EQ(sent.status, 0) << sent.err;
        const sim::Image screen = controller.screen();
        expect_picture(screen, 5, 3);
        expect_picture(screen, 0, 0); // the border
    }
}

TEST_F(ProgramVerbs, ClocksAreInTheFileAsDescribed) {
    const std::string json =
        around(R"("digital": {"date": "12/31", "week": "Mon", "time": "11:59 PM"}, "rect": [0, 0, 46, 16],
                  "one_line": true, "battle": "2024-12-31 23:59:58", "color": "#00FF00"},
                 {"id": 1, "rect": [46, 0, 16, 15], "analog": {"pivot": [8, 7], "marks": "discs",
                  "hour": {"width": 3, "length": 4, "color": "cyan"}, "second": {"width": 0}})");
    ASSERT_EQ(program("build", json).status, 0);
    const sim::StoredProgram six = built(true);
    EXPECT_THAT(Bytes(content_of("P007")).subspan(47, 27), is_hex("00 01 24 20 12 31 23 59 58 02 00*17"));
    const auto& digital = std::get<sim::DigitalClock>(six.areas.at(0).clock.value().face);
    std::vector<int> kinds;
    for (const sim::UnitPlace& unit : digital.units) {
        kinds.push_back(static_cast<int>(unit.unit));
        EXPECT_EQ(unit.color, (Rgb{0, 255, 0}));
    }
    EXPECT_EQ(kinds, (std::vector{2, 10, 3, 9, 5, 10, 6, 8})) << "month/day weekday hour:minute half";
    const ByteBuffer file = content_of("P007");
    EXPECT_THAT(Bytes(file).last(21).first(17), is_hex("0E 08 00 07 00 00 03 04 06 01 05 02 00 06 03 02 00"));
    const Outcome five = program("build", json, {"--generation", "5"});
    ASSERT_EQ(five.status, 0) << five.err;
    EXPECT_THAT(five.err, HasSubstr("areas[0].battle is left out"));
    EXPECT_EQ(std::get<sim::DigitalClock>(built(false).areas.at(0).clock.value().face).units.size(), 8U);
}

TEST_F(ProgramVerbs, ExampleFitsBothGenerations) {
    for (const std::string generation : {"5", "6"})
        for (const std::string verb : {"build", "preview"}) {
            const Outcome outcome = qmctl({"program", verb, QM_EXAMPLES "/program/shop.json", "-o", "out",
                                           "--generation", generation, "--json"});
            ASSERT_EQ(outcome.status, 0) << outcome.err;
            const auto result = nlohmann::json::parse(outcome.out);
            EXPECT_EQ(result.value("notes", nlohmann::json()).size(), generation == "5" ? 1U : 0U);
            if (verb == "preview") {
                EXPECT_EQ(result["areas"].size(), generation == "5" ? 5U : 6U);
            }
        }
}

TEST_F(ProgramVerbs, ProgramOfTheOtherGenerationIsNotSent) {
    sim::Simulator controller({.type = 0x0051, .width = 64, .height = 16});
    const Outcome outcome = program("send", around(R"("text": "x")"), {"-c", address(controller.port())});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("made for generation 6, but the controller is of generation 5"));
    EXPECT_TRUE(controller.files().empty());
}

TEST_F(ProgramVerbs, FailureSaysAtWhichStep) {
    const struct {
        unsigned good_answers; // handshakes count
        const char* step;
    } cases[] = {{3, "announcing the transfer"}, {5, "writing D007"}, {8, "writing P007"}};
    for (const auto& c : cases) {
        sim::Simulator controller(
            {.width = 64,
             .height = 16,
             .fault = sim::Fault{.kind = sim::FaultKind::nack, .after = c.good_answers}});
        const Outcome outcome = program("send", around(R"("text": "x")"), {"-c", address(controller.port())});
        EXPECT_EQ(outcome.status, 2) << c.step;
        EXPECT_THAT(outcome.err, AllOf(HasSubstr(c.step), HasSubstr("refused")));
    }
}

} // namespace
} // namespace qm::test
