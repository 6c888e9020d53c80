// The pages of text and picture areas as the files hold them.
#include "bitmap_font.h"
#include "fixture.h"

#include <array>
#include <fstream>

namespace qm::test {
namespace {

constexpr char kLong[] = "A text that is longer than the area is wide";

// Page data of an area of 16 x 8 on a double-colour screen: green and red bytes.
constexpr std::size_t kSmallPage = 2 * 16 * 8 / 8;

TEST_F(Program, OfGeneration5HoldsAPictureByteForByte) {
    HVpageHeader page = page_header(2);
    page.ValidLen = 999; // not what goes out
    add_area(0, ePicturesArea, {0, 0, 8, 2});
    ASSERT_EQ(program_pictureAreaAddPic(0, 1, &page, picture("red.png", 3, 1, 0xFF0000).c_str()), 0);
    const File file = integrate_g5();
    EXPECT_THAT(Bytes(file.bytes).subspan(22, file.bytes.size() - 26),
                is_hex("01 "                                                 // area count
                       "21 00 00 00 00 00 00 00 00 08 00 02 00 "             // length 33, type, rectangle
                       "00 01 00 "                                           // no border, one page
                       "11 00 00 00 00 02 00 03 F4 01 00 08 00 00 00 00 00 " // 13 + 4; header
                       "FF 1F FF FF")); // green dark; red lit in three columns of the first row
}

TEST_F(Program, OfGeneration6PointsToItsPixelsCountingFromOne) {
    begin(kSixOfPlanes8);
    const HVpageHeader_G6 page = page_header_g6();
    add_area(0, ePicturesArea, {0, 0, 16, 8});
    program_pictureAreaAddPic_G6(0, 1, &page, picture("a.png", 3, 1, 0xFF0000).c_str());
    program_pictureAreaAddPic_G6(0, 2, &page, picture("b.png", 3, 1, 0x00FF00).c_str());
    const File file = integrate_g6();
    // Behind header, flags and count: length 19 + 60 + 1 + 1; records end with position and length.
    EXPECT_THAT(Bytes(file.bytes).subspan(33, 4), is_hex("51 00 00 00"));
    EXPECT_THAT(Bytes(file.bytes).subspan(37 + 21 + 22, 8), is_hex("0E 00 00 00 20 00 00 00"));
    EXPECT_THAT(Bytes(file.bytes).subspan(37 + 21 + 30 + 22, 8), is_hex("2E 00 00 00 20 00 00 00"));
    EXPECT_EQ(file.data.size(), 13 + 2 * kSmallPage + 4);
}

TEST_F(Program, TakesAFontFileOrAFamilyInEveryTextCall) {
    HVpageHeader page = page_header();
    page.fontSize = 12; // 16 pixels
    add_area(0, ePicturesArea, {0, 0, 16, 16});
    const auto pixels = [&](const auto& call, const char* font) {
        EXPECT_EQ(call(0, "A", font, &page), 0);
        return parsed_g5().areas.at(0).pages.at(0).pixels;
    };
    constexpr std::array<unsigned char, 8> rows{0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    const std::string font = bitmap_font(12, 4, rows);
    ByteBuffer square(kSmallPage * 2, 0xFF);
    for (std::size_t row = 4; row < 12; ++row) square[4 * row + 1] = 0x00; // red
    for (const char* file : {"a.ttf", "TTC.TTC.1", "a.otf", "a.Otb", "a.pcf", "a.PCF.gz", "a.bdf"}) {
        std::ofstream(file) << font;
        EXPECT_EQ(pixels(program_picturesAreaAddTxt, file), square) << file;
        EXPECT_EQ(pixels(program_fontPath_picturesAreaAddTxt, file), square) << file;
    }
    EXPECT_EQ(pixels(program_fontPath_picturesAreaAddTxt, "DejaVu Serif"),
              pixels(program_picturesAreaAddTxt, "DejaVu Serif"));
}

TEST_F(Program, CarriesTheCallersPageHeaders) {
    begin(kSixOfPlanes8);
    HVareaHeader_G6 area = area_header_g6(ePicturesArea, 1, 2, 16, 8);
    area.BackGroundFlag = 1;
    area.Transparency = 2;
    area.AreaEqual = 3;
    HVpageHeader_G6 page = page_header_g6(9);
    page.PageStyle = 4;
    page.ClearMode = 5;
    page.RepeatTime = 6;
    page.CartoonFrameRate = 7;
    page.BackNotValidFlag = 1; // not what goes out
    program_addArea_G6(0, &area);
    program_pictureAreaAddPic_G6(0, 1, &page, picture("a.png", 3, 1, 0xFF0000).c_str());
    EXPECT_THAT(Bytes(integrate_g6().bytes).subspan(37, 43),
                is_hex("00 01 00 02 00 10 00 08 00  00  01 02 03  00  00*5  01 00"
                       " 1A 00 00 00  04 09 05 03 F4 01 06 10 00  00 07 00*6 00"));
    EXPECT_EQ(parsed_g6().areas.at(0).pages.at(0).valid_len, 16);
}

TEST_F(Program, GivesThePagesOfATextThatStandsStillTheAreasWidth) {
    const HVpageHeader page = page_header(1, SINGLELINE);
    add_area(0, ePicturesArea, {0, 0, 64, 16});
    program_picturesAreaAddTxt(0, kLong, kFont, &page);
    const auto pages = parsed_g5().areas.at(0).pages;
    ASSERT_GT(pages.size(), 2U);
    for (const sim::Page& p : pages) EXPECT_EQ(p.valid_len, 64);
}

TEST_F(Program, MixesTextAndPicturesAndLeavesMissingOnesOut) {
    const HVpageHeader text = page_header(1), shown = page_header(5), lost = page_header(6);
    add_area(0, ePicturesArea, {0, 0, 16, 8});
    program_pictureAreaAddPic(0, 8, &lost, "missing.png");
    program_pictureAreaAddPic(0, 9, &shown, picture("a.png", 16, 8, 0xFF0000).c_str());
    program_picturesAreaAddTxt(0, "x", kFont, &text);
    sim::StoredProgram program;
    EXPECT_EQ(printed_by([&] { program = parsed_g5(); }), "Error:The picture does not exist.ID:8\n");
    ASSERT_EQ(program.areas.at(0).pages.size(), 2U);
    EXPECT_EQ(program.areas[0].pages[0].display_mode, 1);
    EXPECT_EQ(program.areas[0].pages[1].display_mode, 5);
}

TEST_F(Program, ReplacesAPictureByItsNumber) {
    begin(kSixOfPlanes8);
    const HVpageHeader_G6 first = page_header_g6(1), second = page_header_g6(2);
    const std::string red = picture("r.png", 16, 8, 0xFF0000), green = picture("g.png", 16, 8, 0x00FF00);
    add_area(0, ePicturesArea, {0, 0, 16, 8});
    program_pictureAreaAddPic_G6(0, 1, &first, red.c_str());
    EXPECT_EQ(program_pictureAreaChangePic_G6(0, 1, &second, green.c_str()), 0);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_pictureAreaChangePic_G6(0, 2, &second, red.c_str()), -1); }),
              "Error:The picture does not exist.ID:2\n");
    const auto pages = parsed_g6().areas.at(0).pages;
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0].display_mode, 2);
    EXPECT_THAT(Bytes(pages[0].pixels).first(4), is_hex("00 FF 00 FF")) << "green lit, red dark";
}

TEST_F(Program, KeepsTheFontWhenTheTextChanges) {
    const HVpageHeader page = page_header();
    const auto pixels_of = [&](const char* font, const char* first, const char* then) {
        add_area(0, ePicturesArea, {0, 0, 96, 16});
        program_picturesAreaAddTxt(0, first, font, &page);
        if (then) program_picturesAreaChangeTxt(0, then, &page);
        return parsed_g5().areas.at(0).pages.at(0).pixels;
    };
    EXPECT_EQ(pixels_of("DejaVu Sans Mono", "old", "new"), pixels_of("DejaVu Sans Mono", "new", nullptr));
    EXPECT_NE(pixels_of("DejaVu Sans Mono", "new", nullptr), pixels_of("DejaVu Sans", "new", nullptr));
}

TEST_F(Program, CarriesSpeechUntilItIsSwitchedOff) {
    begin(kSixOfPlanes8);
    const HVPicAreaSoundHeader_G6 header{1, 2, 3, 4, 0x01020304, 0x05060708, 9, 10, 11, 12};
    add_area(0, ePicturesArea, {0, 0, 16, 8});
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_pictureAreaEnableSound_G6(0, header, ""), -1); }),
              "Error:soundData is empty.\n");
    EXPECT_FALSE(parsed_g6().areas.at(0).sound);
    EXPECT_EQ(program_pictureAreaEnableSound_G6(0, header, "abc"), 0);
    EXPECT_THAT(Bytes(integrate_g6().bytes).subspan(50, 24),
                is_hex("01 01 02 03 04 04 03 02 01 08 07 06 05 09 0A 0B 0C 03 00 00 00 61 62 63"));
    EXPECT_EQ(program_pictureAreaChangeSoundSettings_G6(0, header, "other"), 0);
    EXPECT_THAT(parsed_g6().areas.at(0).sound.value().text, is_hex("6F 74 68 65 72"));
    EXPECT_EQ(program_pictureAreaDisableSound_G6(0), 0);
    EXPECT_FALSE(parsed_g6().areas.at(0).sound);
}

} // namespace
} // namespace qm::test
