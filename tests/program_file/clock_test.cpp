// Time areas as the files hold them.
#include "fixture.h"

#include <fstream>

namespace qm::test {
namespace {

constexpr Ouint16 kArea = 3;

const HVAnalogClockHeader_G56 kClock{4, 1, 5, 6, 7, 0x00FF0002, 8, 9, 0x123456, 10, 11, 1};
const ClockColor_G56 kColors{eWhite, eGreen, eRed};

ScreenKind full_colour(Ouint16 type) { return {"", true, type, sim::ScreenColor::full}; }

ByteBuffer file_bytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Clock : public Program {
  protected:
    static void add_g5(Ouint16 width, Ouint16 height) {
        use(kFive);
        add_area(kArea, eTimeClockArea, {0, 0, width, height});
    }
    static void add_g6(const ScreenKind& screen, Ouint16 width, Ouint16 height) {
        begin(screen);
        HVareaHeader_G6 area = area_header_g6(eTimeClockArea, 0, 0, width, height);
        area.BackGroundFlag = 0x21;
        area.Transparency = 0x22;
        area.AreaEqual = 0x23;
        ASSERT_EQ(program_addArea_G6(kArea, &area), 0);
    }
    static sim::DigitalClock digital() {
        return std::get<sim::DigitalClock>(parsed().areas.at(0).clock.value().face);
    }
    static ByteBuffer page() {
        const sim::ProgramArea area = parsed().areas.at(0);
        EXPECT_TRUE(std::holds_alternative<sim::AnalogClock>(area.clock.value().face));
        return area.pages.at(0).pixels;
    }
};

TEST_F(Clock, OfGeneration5IsHandsAndADialByteForByte) {
    add_g5(8, 2);
    ASSERT_EQ(program_timeAreaAddAnalogClock(kArea, &kClock, eSQUARE, &kColors), 0);
    EXPECT_THAT(Bytes(integrate_g5().bytes).subspan(23, 4 + 37),
                is_hex("25 00 00 00 02 00 00 00 00 08 00 02 00 " // length 9 + 4 + 20 + 4, type, rectangle
                       "00 01 01 00 "                            // no border, analog, one unit, no glyphs
                       "04 00 01 00 05 06 07 02 08 09 56 0A 0B 01 "
                       "01 00 04 00 00 00 " // squares; length of the page
                       "FF 00 FF 00"));     // red; no room for marks
}

// Areas of 8 x 1: the page is 8 bytes in planes of 32, and 16 or 24 in full colour.
TEST_F(Clock, OfGeneration6TakesHandsAsTheScreenDoes) {
    const struct {
        ScreenKind screen;
        const char *pageLength, *setting;
    } cases[] = {
        {kSix, "08", "0E 04 00 01 00 05 06 07 02 08 09 56 0A 0B 01"},
        {full_colour(kMode4), "00", "11 04 00 01 00 05 06 07 FF 00 08 09 12 34 0A 0B FF 00"},
        {full_colour(kMode3), "10", "11 04 00 01 00 05 06 07 1F 00 08 09 40 18 0A 0B 1F 00"},
        {full_colour(kMode5), "18",
         "17 04 00 01 00 05 06 07 FF 00 02 00 08 09 12 34 56 00 0A 0B FF 00 00 00"},
    };
    for (const auto& c : cases) {
        add_g6(c.screen, 8, 1);
        ASSERT_EQ(program_timeAreaAddAnalogClock_G6(kArea, &kClock, eCIRCLE, &kColors), 0);
        const File file = integrate_g6();
        EXPECT_THAT(Bytes(file.bytes).subspan(37, file.bytes.size() - 41),
                    is_hex(std::string("02 00 00 00 00 08 00 01 00 00 21 00 00*9 22 23 00*14 00 00*5 01 00 "
                                       "1A 00 00 00 00*7 08 00 00*9 0E 00 00 00 ")
                               .append(c.pageLength)
                               .append(" 00 00 00 01 01 00 ")
                               .append(c.setting)
                               .append(" 02 00")));
    }
}

// 2024-02-29: its first unit is of four digits, in yellow, and stands in the middle of 96 pixels.
TEST_F(Clock, DescribesTheUnitsOfADate) {
    add_g5(96, 16);
    const HVtimeAreaData_G56 content = time_content();
    ASSERT_EQ(program_timeAreaAddContent(kArea, &content), 0);
    EXPECT_EQ(parsed().areas.at(0).pages.at(0).pixels, hex("FF*384")) << "black";
    const sim::DigitalClock clock = digital();
    using Unit = sim::ClockUnit;
    const Unit units[] = {Unit::year, Unit::literal, Unit::month, Unit::literal, Unit::day};
    ASSERT_EQ(clock.units.size(), 5U);
    const int x = clock.units[0].x;
    int width = 0;
    for (std::size_t i = 0; i < 5; ++i) {
        const sim::UnitPlace& unit = clock.units[i];
        EXPECT_EQ(unit.unit, units[i]);
        EXPECT_EQ(unit.x, x + width) << "the cells follow one another";
        width += clock.sets[unit.set].width * cells_of(unit.unit);
    }
    EXPECT_EQ(x, (96 - width) / 2) << "in the middle";
    EXPECT_EQ(clock.sets.size(), 2U) << "digits, and one set for both dashes";
    const auto low = static_cast<Ouint8>(x), y = static_cast<Ouint8>(clock.units[0].y);
    EXPECT_EQ(hex_text(Bytes(integrate_g5().bytes).subspan(40, 8)),
              hex_text(ByteBuffer{0, low, 0, y, 0, 0, eYellow, 0}));
}

TEST_F(Clock, ReducesColoursToTheNearestOfThePalette) {
    for (const auto& [color, index] : {std::pair<Ouint32, int>{eMagenta, 5},
                                       {0x808080, 1},
                                       {0x818181, 7},
                                       {0xFF8200, 3},
                                       {0xFF00FF, 5},
                                       {0x80FFFF, 6},
                                       {0x00FF00, 2},
                                       {0x7F7FFF, 4},
                                       {0x81807F, 1}}) {
        add_g5(64, 16);
        HVtimeAreaData_G56 content = time_content();
        content.color = color;
        ASSERT_EQ(program_timeAreaAddContent(kArea, &content), 0);
        EXPECT_EQ(int{integrate_g5().bytes.at(46)}, index) << std::hex << color;
    }
}

TEST_F(Clock, CarriesTheBattleTimeAsItIsUntilItIsCancelled) {
    add_g6(kSix, 8, 8);
    const HVTimeAreaBattle_G6 battle{0x2024, 2, 3, 4, 5, 6, 7, 8};
    ASSERT_EQ(program_timeAreaSetBattleTime_G6(kArea, &battle), 0);
    EXPECT_THAT(Bytes(integrate_g6().bytes).subspan(47, 27),
                is_hex("21 01 24 20 02 03 04 05 06 07 08 22 23 00*14"));
    ASSERT_EQ(program_timeAreaCancleBattleTime_G6(kArea), 0);
    EXPECT_THAT(Bytes(integrate_g6().bytes).subspan(47, 27), is_hex("21 00 00*9 22 23 00*14"));
}

TEST_F(Clock, KeepsTheFontWhenItsContentChanges) {
    for (const bool file : {false, true}) {
        add_g6(kSix, 96, 16);
        HVtimeAreaData_G56 content = time_content();
        std::string font = file ? "/usr/share/fonts/truetype/dejavu/DejaVuSerif-Bold.ttf" : "DejaVu Serif";
        content.fontName = font.c_str();
        ASSERT_EQ(file ? program_fontPath_timeAreaAddContent_G6(kArea, &content)
                       : program_timeAreaAddContent_G6(kArea, &content),
                  0);
        font.assign(font.size(), 'x'); // it is the caller's
        const sim::DigitalClock before = digital();
        content.fontName = "another";
        content.datestyle = MM_DD_MINUS;
        ASSERT_EQ(program_timeAreaChangeContent_G6(kArea, &content), 0);
        const sim::DigitalClock after = digital();
        EXPECT_EQ(after.units.size(), 3U);
        EXPECT_EQ(after.sets.at(after.units.at(0).set).glyphs, before.sets.at(before.units.at(0).set).glyphs);
    }
}

TEST_F(Clock, ScalesItsDialPictureFromAFileOrFromMemory) {
    add_g5(8, 2);
    const std::string green = picture("green.png", 80, 50, 0x00FF00);
    ASSERT_EQ(program_timeAreaChangeDialPic(kArea, green.c_str()), 0);
    const ByteBuffer all = hex("00 FF 00 FF");
    EXPECT_THAT(Bytes(integrate_g5().bytes).subspan(37, 27),
                is_hex("01 01 00 00*14 00 00 04 00 00 00 00 FF 00 FF"))
        << "a dial picture makes a clock, which has no hands yet";
    program_timeAreaAddAnalogClock(kArea, &kClock, eLINE, &kColors);
    EXPECT_EQ(page(), all);
    program_timeAreaRemoveDialPic(kArea);
    EXPECT_EQ(page(), hex("FF 00 FF 00")) << "the clock stays";

    const std::filesystem::path folder = std::filesystem::current_path() / "temporary";
    std::filesystem::create_directory(folder);
    ASSERT_EQ(setenv("TMPDIR", folder.c_str(), 1), 0);
    ByteBuffer png = file_bytes(green);
    ASSERT_EQ(program_timeAreaChangeDialPicAdd_G56(kArea, png.data(), static_cast<Ouint32>(png.size())), 0);
    png.assign(png.size(), 0); // it was copied
    EXPECT_EQ(page(), all);
    EXPECT_EQ(program_timeAreaChangeDialPicAdd_G56(kArea, png.data(), 0), -1);
    ASSERT_EQ(setenv("TMPDIR", "/nowhere", 1), 0);
    EXPECT_EQ(program_timeAreaChangeDialPicAdd_G56(kArea, png.data(), 1), -1);
    unsetenv("TMPDIR");
    EXPECT_EQ(page(), all) << "the picture stays as it was";
    program_deleteProgram();
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "the copy goes with the area";
}

TEST_F(Clock, OfGeneration6ScalesItsDialPictureToo) {
    const std::string green = picture("green.png", 80, 50, 0x00FF00);
    const ByteBuffer png = file_bytes(green), all = hex("00 FF 00 FF"), none = hex("FF 00 FF 00");
    add_g6(kSixOfPlanes8, 8, 2);
    ASSERT_EQ(program_timeAreaChangeDialPic_G6(kArea, green.c_str()), 0);
    EXPECT_EQ(page(), all);
    EXPECT_THAT(Bytes(integrate_g6().bytes).subspan(112, 18), is_hex("01 01 00 0E 00*14"))
        << "it has no hands yet";
    ASSERT_EQ(program_timeAreaChangeAnalogClock_G6(kArea, &kClock, eLINE, &kColors), 0);
    ASSERT_EQ(program_timeAreaRemoveDialPic_G6(kArea), 0);
    EXPECT_EQ(page(), none);
    ASSERT_EQ(program_timeAreaChangeDialPicAdd_G56(kArea, png.data(), static_cast<Ouint32>(png.size())), 0);
    EXPECT_EQ(page(), all);
    program_setScreenParams_G56(SCREEN_COLOR_FULLCOLOR, kMode5, DOUBLE_COLOR_PIXTYPE_1);
    EXPECT_EQ(int{integrate_g6().bytes.at(115)}, 14) << "of the screen when the clock was set";
}

TEST_F(Clock, ReportsADialPictureThatCannotBeRead) {
    add_g5(8, 2);
    program_timeAreaChangeAnalogClock(kArea, &kClock, eLINE, &kColors);
    EXPECT_EQ(program_timeAreaChangeDialPic(kArea, "missing.png"), 0);
    EXPECT_EQ(printed_by([] { EXPECT_EQ(page(), hex("FF 00 FF 00")) << "the dial is drawn without it"; }),
              "Error:The picture is not exist.\n");
}

TEST_F(Clock, ReportsAFontFileThatCannotBeOpenedOnce) {
    add_g5(24, 16);
    HVtimeAreaData_G56 content = time_content();
    content.fontSize = 30; // too large, so that other sizes are tried
    for (const auto& add : {program_timeAreaAddContent, program_fontPath_timeAreaAddContent})
        for (const auto& [name, message] :
             {std::pair{"missing.otf", "Error 1 opening font.\n"}, {"missing", ""}}) {
            content.fontName = name;
            EXPECT_EQ(add(kArea, &content), 0);
            EXPECT_EQ(printed_by([] { EXPECT_FALSE(digital().units.empty()) << "another font stands in"; }),
                      message)
                << "only the first is a file";
        }
}

TEST_F(Clock, IsPreviewedAsItIsNow) {
    add_g5(32, 32);
    const HVtimeAreaData_G56 content = time_content();
    program_timeAreaAddContent(kArea, &content);
    getPageData page{};
    EXPECT_EQ(program_pictureAreaGetOnePage(kArea, 0, &page), 0);
    EXPECT_EQ(Ouint32{page.allPageNub}, 1U);
    EXPECT_GT(Ouint32{page.pageLen}, 0U);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_pictureAreaGetOnePage(kArea, 1, &page), -1); }),
              "Error:pageNum out of range.\n");
}

TEST_F(Clock, RefusesWhatIsNotGiven) {
    add_g5(8, 8);
    HVtimeAreaData_G56 content = time_content();
    content.fontName = nullptr;
    EXPECT_EQ(program_timeAreaAddContent(kArea, &content), -1);
    EXPECT_EQ(program_fontPath_timeAreaAddContent(kArea, &content), -1);
    EXPECT_EQ(program_timeAreaChangeContent(kArea, &content), 0) << "the font is kept";
    EXPECT_EQ(program_timeAreaAddContent(kArea, nullptr), -1);
    EXPECT_EQ(program_timeAreaAddAnalogClock(kArea, nullptr, eLINE, &kColors), -1);
    EXPECT_EQ(program_timeAreaAddAnalogClock(kArea, &kClock, eLINE, nullptr), -1);
    EXPECT_EQ(program_timeAreaChangeDialPic(kArea, nullptr), -1);
    EXPECT_EQ(program_timeAreaChangeDialPicAdd_G56(kArea, nullptr, 1), -1);
    EXPECT_EQ(program_timeAreaSetBattleTime_G6(kArea, nullptr), -1);
    EXPECT_EQ(program_timeAreaAddContent_G6(kArea, &content), -1) << "of the other generation";
}

// Formats and sizes that a caller may hand in by mistake are no reason to fail.
TEST_F(Clock, SurvivesContentThatMakesNoSense) {
    add_g5(32, 16);
    HVtimeAreaData_G56 content = time_content();
    for (const Ouint16 size : {Ouint16{0}, Ouint16{1}, Ouint16{0xFFFF}}) {
        content.fontSize = size;
        EXPECT_EQ(program_timeAreaAddContent(kArea, &content), 0);
        EXPECT_FALSE(digital().units.empty()) << size;
    }
    content.fontName = "\xCB\xCE\xCC\xE5"; // GB2312
    EXPECT_EQ(program_timeAreaAddContent(kArea, &content), 0);
    EXPECT_FALSE(digital().units.empty());
    content.fontName = kFont;
    content.datestyle = static_cast<DateStyle>(8);
    content.week_enable = true; // its style is 0
    content.fontAlign = 77;
    EXPECT_EQ(program_timeAreaAddContent(kArea, &content), 0);
    EXPECT_TRUE(digital().units.empty());
    add_g5(0, 0);
    EXPECT_EQ(program_timeAreaAddContent(kArea, &content), 0);
    EXPECT_TRUE(parsed().areas.at(0).pages.at(0).pixels.empty());
}

} // namespace
} // namespace qm::test
