// Time areas as the files hold them.
#include "fixture.h"
#include "hex.h"
#include "program/TimeArea.h"

#include <fstream>

namespace qm::test {
namespace {

constexpr Ouint16 kArea = 3;

const HVAnalogClockHeader_G56 kClock{4, 1, 5, 6, 7, 0x00FF0002, 8, 9, 0x123456, 10, 11, 1};
const ClockColor_G56 kColors{eWhite, eGreen, eRed};

ByteBuffer file_bytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

class Clock : public Program {
  protected:
    static void add_g5(Ouint16 width, Ouint16 height) {
        const HVareaHeader area = area_header(eTimeClockArea, 0, 0, width, height);
        ASSERT_EQ(program_AddArea(kArea, &area), 0);
    }
    static void add_g6(Ouint16 width, Ouint16 height) {
        HVareaHeader_G6 area = area_header_g6(eTimeClockArea, 0, 0, width, height);
        area.BackGroundFlag = 0x21;
        area.Transparency = 0x22;
        area.AreaEqual = 0x23;
        ASSERT_EQ(program_addArea_G6(kArea, &area), 0);
    }
    static ParsedClock clock_g5(const NotInTheFile& known = {}) {
        return parsed_g5(known).areas.at(0).clock.value();
    }
    static ParsedClock clock_g6() { return parsed_g6().areas.at(0).clock.value(); }
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
        E_ScreenColor_G56 color;
        Ouint16 type;
        const char* pageLength;
        const char* setting;
    } cases[] = {
        {SCREEN_COLOR_DOUBLE, kMode4, "08", "0E 04 00 01 00 05 06 07 02 08 09 56 0A 0B 01"},
        {SCREEN_COLOR_FULLCOLOR, kMode4, "00", "11 04 00 01 00 05 06 07 FF 00 08 09 12 34 0A 0B FF 00"},
        {SCREEN_COLOR_FULLCOLOR, kMode3, "10", "11 04 00 01 00 05 06 07 1F 00 08 09 40 18 0A 0B 1F 00"},
        {SCREEN_COLOR_FULLCOLOR, kMode5, "18",
         "17 04 00 01 00 05 06 07 FF 00 02 00 08 09 12 34 56 00 0A 0B FF 00 00 00"},
    };
    for (const auto& c : cases) {
        program_deleteProgram();
        program_setScreenParams_G56(c.color, c.type, DOUBLE_COLOR_PIXTYPE_1);
        add_g6(8, 1);
        ASSERT_EQ(program_timeAreaAddAnalogClock_G6(kArea, &kClock, eCIRCLE, &kColors), 0);
        const File file = integrate_g6();
        EXPECT_THAT(Bytes(file.bytes).subspan(37, file.bytes.size() - 41),
                    is_hex(std::string("02 00 00 00 00 08 00 01 00 00 21 00 00*9 22 23 00*14 00 00*5 01 00 "
                                       "1A 00 00 00 00*7 08 00 00*9 0E 00 00 00 ")
                               .append(c.pageLength)
                               .append(" 00 00 00 01 01 00 ")
                               .append(c.setting)
                               .append(" 02 00")))
            << c.setting;
    }
}

// 2024-02-29: the kinds of the units and their cells, in the order of the text.
TEST_F(Clock, DescribesTheUnitsOfADate) {
    add_g5(96, 16);
    const HVtimeAreaData_G56 content = time_content();
    ASSERT_EQ(program_timeAreaAddContent(kArea, &content), 0);
    const ParsedClock clock = clock_g5();
    EXPECT_EQ(clock.page, hex("FF*384")) << "black";
    const Ouint8 kinds[] = {0, 10, 2, 10, 3};
    const int cells[] = {4, 1, 2, 1, 2};
    ASSERT_EQ(clock.units.size(), 5U);
    int x = clock.units[0].x, width = 0;
    for (std::size_t i = 0; i < 5; ++i) {
        const ParsedUnit& unit = clock.units[i];
        EXPECT_EQ(unit.kind, kinds[i]);
        EXPECT_EQ(unit.x, x + width) << "the cells follow one another";
        EXPECT_EQ(unit.setting, hex("03 00"));
        width += clock.sets[unit.set].width * cells[i];
    }
    EXPECT_EQ(x, (96 - width) / 2) << "in the middle";
    ASSERT_EQ(clock.sets.size(), 2U) << "digits, and one set for both dashes";
    EXPECT_EQ(clock.sets[clock.units[0].set].count, 10);
    EXPECT_EQ(clock.sets[clock.units[1].set].count, 1);
}

TEST_F(Clock, ReducesColoursAsTheScreenNeeds) {
    const auto bytes = [](int perPixel) {
        return [perPixel](int w, int h) { return static_cast<std::size_t>(w * h * perPixel); };
    };
    const auto planes = NotInTheFile().glyph;
    const struct {
        E_ScreenColor_G56 screen;
        Ouint16 type;
        Ouint32 color;
        const char* setting;
        std::function<std::size_t(int, int)> glyph;
    } cases[] = {
        {SCREEN_COLOR_DOUBLE, kMode0, eMagenta, "05 00", planes},
        {SCREEN_COLOR_DOUBLE, kMode0, 0x808080, "01 00", planes},
        {SCREEN_COLOR_DOUBLE, kMode0, 0x818181, "07 00", planes},
        {SCREEN_COLOR_DOUBLE, kMode0, 0xFF8200, "03 00", planes},
        {SCREEN_COLOR_DOUBLE, kMode0, 0xFF00FF, "05 00", planes},
        {SCREEN_COLOR_DOUBLE, kMode0, 0x80FFFF, "06 00", planes},
        {SCREEN_COLOR_DOUBLE, kMode0, 0x00FF00, "02 00", planes},
        {SCREEN_COLOR_DOUBLE, kMode0, 0x7F7FFF, "04 00", planes},
        {SCREEN_COLOR_DOUBLE, kMode0, 0x81807F, "01 00", planes},
        {SCREEN_COLOR_FULLCOLOR, kMode4, 0x123456, "12 34 56 00 00", bytes(0)},
        {SCREEN_COLOR_FULLCOLOR, kMode4, 0xAB123456, "12 34 56 00 00", bytes(0)},
        {SCREEN_COLOR_FULLCOLOR, kMode5, eYellow, "FF FF 00 00 00", bytes(3)},
        {SCREEN_COLOR_FULLCOLOR, kMode5, eCyan, "00 FF FF 00 00", bytes(3)},
        {SCREEN_COLOR_FULLCOLOR, kMode3, eBlack, "00 00 00", bytes(2)},
        {SCREEN_COLOR_FULLCOLOR, kMode3, eRed, "1F 00 00", bytes(2)},
        {SCREEN_COLOR_FULLCOLOR, kMode3, eWhite, "FF FF 00", bytes(2)},
        {SCREEN_COLOR_FULLCOLOR, kMode3, 0x123456, "40 18 00", bytes(2)},
    };
    for (const auto& c : cases) {
        program_deleteProgram();
        program_setScreenParams_G56(c.screen, c.type, DOUBLE_COLOR_PIXTYPE_2);
        add_g5(64, 16);
        HVtimeAreaData_G56 content = time_content();
        content.color = c.color;
        ASSERT_EQ(program_timeAreaAddContent(kArea, &content), 0);
        const ByteBuffer setting = hex(c.setting);
        for (const ParsedUnit& unit : clock_g5({.timeSetting = setting.size(), .glyph = c.glyph}).units)
            EXPECT_EQ(unit.setting, setting) << std::hex << c.color;
    }
}

TEST_F(Clock, ConvertsNumbersToBcdWithoutJudgingThem) {
    EXPECT_EQ(TimeArea::byte2bcd(59), 0x59);
    EXPECT_EQ(TimeArea::byte2bcd(123), 0xC3);
    EXPECT_EQ(TimeArea::short2bcd(2024), 0x2024);
    EXPECT_EQ(TimeArea::short2bcd(1999), 0x1999);
}

TEST_F(Clock, TakesPointsAsPixels) {
    TimeArea area;
    for (const auto& [points, pixels] : {std::pair<Ouint16, double>{12, 16}, {10, 13}, {9, 12}}) {
        HVtimeAreaData_G56 content = time_content();
        content.fontSize = points;
        area.AddContent(content);
        EXPECT_EQ(area.fontSize, pixels);
    }
}

TEST_F(Clock, CarriesTheBattleTimeAsItIsUntilItIsCancelled) {
    add_g6(8, 8);
    const HVTimeAreaBattle_G6 battle{0x2024, 2, 3, 4, 5, 6, 7, 8};
    ASSERT_EQ(program_timeAreaSetBattleTime_G6(kArea, &battle), 0);
    EXPECT_EQ(clock_g6().extended, hex("21 01 24 20 02 03 04 05 06 07 08 22 23 00*14"));
    ASSERT_EQ(program_timeAreaCancleBattleTime_G6(kArea), 0);
    EXPECT_EQ(clock_g6().extended, hex("21 00 00*9 22 23 00*14"));
}

TEST_F(Clock, KeepsTheFontWhenItsContentChanges) {
    for (const bool file : {false, true}) {
        program_deleteProgram();
        add_g6(96, 16);
        HVtimeAreaData_G56 content = time_content();
        std::string font = file ? "/usr/share/fonts/truetype/dejavu/DejaVuSerif-Bold.ttf" : "DejaVu Serif";
        content.fontName = font.c_str();
        ASSERT_EQ(file ? program_fontPath_timeAreaAddContent_G6(kArea, &content)
                       : program_timeAreaAddContent_G6(kArea, &content),
                  0);
        font.assign(font.size(), 'x'); // it is the caller's
        const ParsedClock before = clock_g6();
        content.fontName = "another";
        content.datestyle = MM_DD_MINUS;
        ASSERT_EQ(program_timeAreaChangeContent_G6(kArea, &content), 0);
        const ParsedClock after = clock_g6();
        EXPECT_EQ(after.units.size(), 3U);
        EXPECT_EQ(after.sets.at(after.units.at(0).set).glyphs, before.sets.at(before.units.at(0).set).glyphs);
    }
}

TEST_F(Clock, ScalesItsDialPictureFromAFileOrFromMemory) {
    add_g5(8, 2);
    const std::string green = picture("green.png", 80, 50, 0x00FF00);
    ASSERT_EQ(program_timeAreaChangeDialPic(kArea, green.c_str()), 0);
    const ByteBuffer all = hex("00 FF 00 FF");
    ParsedClock clock = clock_g5();
    EXPECT_EQ(clock.kind, 1) << "a dial picture makes a clock";
    EXPECT_EQ(clock.page, all);
    EXPECT_EQ(clock.setting, ByteBuffer(14));
    program_timeAreaAddAnalogClock(kArea, &kClock, eLINE, &kColors);
    EXPECT_EQ(clock_g5().page, all);
    program_timeAreaRemoveDialPic(kArea);
    clock = clock_g5();
    EXPECT_EQ(clock.kind, 1);
    EXPECT_EQ(clock.page, hex("FF 00 FF 00")) << "the clock stays";

    const std::filesystem::path folder = std::filesystem::current_path() / "temporary";
    std::filesystem::create_directory(folder);
    ASSERT_EQ(setenv("TMPDIR", folder.c_str(), 1), 0);
    ByteBuffer png = file_bytes(green);
    ASSERT_EQ(program_timeAreaChangeDialPicAdd_G56(kArea, png.data(), static_cast<Ouint32>(png.size())), 0);
    png.assign(png.size(), 0); // it was copied
    EXPECT_EQ(clock_g5().page, all);
    EXPECT_EQ(program_timeAreaChangeDialPicAdd_G56(kArea, png.data(), 0), -1);
    ASSERT_EQ(setenv("TMPDIR", "/nowhere", 1), 0);
    EXPECT_EQ(program_timeAreaChangeDialPicAdd_G56(kArea, png.data(), 1), -1);
    unsetenv("TMPDIR");
    EXPECT_EQ(clock_g5().page, all) << "the picture stays as it was";
    program_deleteProgram();
    EXPECT_TRUE(std::filesystem::is_empty(folder)) << "the copy goes with the area";
}

TEST_F(Clock, OfGeneration6ScalesItsDialPictureToo) {
    const std::string green = picture("green.png", 80, 50, 0x00FF00);
    const ByteBuffer png = file_bytes(green), all = hex("00 FF 00 FF"), none = hex("FF 00 FF 00");
    program_setScreenParams_G56(SCREEN_COLOR_DOUBLE, kMode0, DOUBLE_COLOR_PIXTYPE_1);
    add_g6(8, 2);
    ASSERT_EQ(program_timeAreaChangeDialPic_G6(kArea, green.c_str()), 0);
    EXPECT_EQ(clock_g6().page, all);
    EXPECT_EQ(clock_g6().setting, ByteBuffer(14)) << "it has no hands yet";
    ASSERT_EQ(program_timeAreaChangeAnalogClock_G6(kArea, &kClock, eLINE, &kColors), 0);
    ASSERT_EQ(program_timeAreaRemoveDialPic_G6(kArea), 0);
    EXPECT_EQ(clock_g6().page, none);
    ASSERT_EQ(program_timeAreaChangeDialPicAdd_G56(kArea, png.data(), static_cast<Ouint32>(png.size())), 0);
    EXPECT_EQ(clock_g6().page, all);
    program_setScreenParams_G56(SCREEN_COLOR_FULLCOLOR, kMode5, DOUBLE_COLOR_PIXTYPE_1);
    EXPECT_EQ(clock_g6().setting.size(), 14U) << "of the screen when the clock was set";
}

TEST_F(Clock, ReportsADialPictureThatCannotBeRead) {
    add_g5(8, 2);
    program_timeAreaChangeAnalogClock(kArea, &kClock, eLINE, &kColors);
    EXPECT_EQ(program_timeAreaChangeDialPic(kArea, "missing.png"), 0);
    ParsedClock clock;
    EXPECT_EQ(printed_by([&] { clock = clock_g5(); }), "Error:The picture is not exist.\n");
    EXPECT_EQ(clock.page, hex("FF 00 FF 00")) << "the dial is drawn without it";
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
            ParsedClock clock;
            EXPECT_EQ(printed_by([&] { clock = clock_g5(); }), message) << "only the first is a file";
            EXPECT_FALSE(clock.units.empty()) << "another font stands in";
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
        EXPECT_FALSE(clock_g5().units.empty()) << size;
    }
    content.fontName = "\xCB\xCE\xCC\xE5"; // GB2312
    EXPECT_EQ(program_timeAreaAddContent(kArea, &content), 0);
    EXPECT_FALSE(clock_g5().units.empty());
    content.fontName = kFont;
    content.datestyle = static_cast<DateStyle>(8);
    content.week_enable = true; // its style is 0
    content.fontAlign = 77;
    EXPECT_EQ(program_timeAreaAddContent(kArea, &content), 0);
    EXPECT_TRUE(clock_g5({.clockPage = 128}).units.empty());
    add_g5(0, 0);
    EXPECT_EQ(program_timeAreaAddContent(kArea, &content), 0);
    EXPECT_TRUE(clock_g5().page.empty());
}

} // namespace
} // namespace qm::test
