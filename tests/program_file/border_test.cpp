// Borders around the screen and around areas.
#include "fixture.h"
#include "hex.h"

namespace qm::test {
namespace {

constexpr std::size_t kPattern = 2 * 16 * 2 / 8; // 16 x 2 on a double-colour screen, mode 0
const std::string kMissing = "Error:Can't find frame png.\n";

TEST_F(Program, OfGeneration5TakesAScreenBorder) {
    const HVscreenframeHeader header{1, 2, 3, 4, 5, 0x0607};
    EXPECT_EQ(program_addFrame(&header, picture("f.png", 16, 2, 0xFF0000).c_str()), 0);
    ParsedProgram program = parsed_g5({.borderPixels = {kPattern}});
    ASSERT_TRUE(program.frame);
    EXPECT_THAT(*program.frame, is_hex("01 02 03 04 05 07 06"));
    EXPECT_THAT(program.framePixels, is_hex("FF 00 FF 00 FF 00 FF 00")) << "green dark, red lit";
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_changeFrame(&header, "missing.png"), 0); }), kMissing);
    EXPECT_FALSE(parsed_g5().frame);
    program_addFrame(&header, picture("f.png", 16, 2, 0xFF0000).c_str());
    EXPECT_EQ(program_removeFrame(), 0);
    EXPECT_FALSE(parsed_g5().frame);
}

TEST_F(Program, OfGeneration6TakesOneScreenBorder) {
    const HVscreenframeHeader_G6 header{2, 3, 4, 5, 6, 7};
    const std::string pattern = picture("f.png", 16, 2, 0xFF0000);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_changeFrame_G6(&header, pattern.c_str()), -1); }),
              "Error:No frame have been added.\n");
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_addFrame_G6(&header, "missing.png"), -1); }), kMissing);
    EXPECT_EQ(program_addFrame_G6(&header, pattern.c_str()), 0);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_addFrame_G6(&header, pattern.c_str()), -1); }), "");
    const HVscreenframeHeader_G6 changed{9, 3, 4, 5, 6, 7};
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_changeFrame_G6(&changed, "missing.png"), -1); }), kMissing);
    const ParsedProgram program = parsed_g6({.borderPixels = {kPattern}});
    ASSERT_TRUE(program.frame) << "the pattern stays";
    EXPECT_THAT(*program.frame, is_hex("01 09 03 04 05 06 07 00*7")) << "and has the new effect";
    EXPECT_EQ(program_removeFrame_G6(), 0);
    EXPECT_FALSE(parsed_g6().frame);
}

TEST_F(Program, ShrinksTheContentsOfABorderedArea) {
    const HVareaHeader area = area_header(ePicturesArea, 8, 4, 64, 32);
    const HVpageHeader page = page_header();
    const HVareaframeHeader border{0, 2, 3, 4, 5, 0x0607};
    program_AddArea(0, &area);
    program_picturesAreaAddTxt(0, "bordered", kFont, &page);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_picturesAreaAddFrame(0, &border, "missing.png"), 0); }),
              kMissing);
    const std::size_t plain = parsed_g5().areas.at(0).pages.at(0).pixels.size();
    EXPECT_EQ(plain, 2U * 64 * 32 / 8);

    EXPECT_EQ(program_picturesAreaAddFrame(0, &border, picture("f.png", 16, 2, 0xFF0000).c_str()), 0);
    EXPECT_EQ(program_picturesAreaAddFrame(0, &border, picture("g.png", 16, 8, 0xFF0000).c_str()), 0)
        << "ignored";
    const ParsedArea parsed = parsed_g5({.borderPixels = {kPattern}}).areas.at(0);
    ASSERT_TRUE(parsed.border);
    EXPECT_THAT(*parsed.border, is_hex("01 02 03 04 05 07 06"));
    EXPECT_EQ(parsed.x, 8) << "the area itself stays";
    EXPECT_EQ(parsed.pages.at(0).validLen, 60);
    // 60 pixels from column 10 on: 2 before, 2 behind, 64 in all.
    EXPECT_EQ(parsed.pages[0].pixels.size(), 2U * 64 * 28 / 8);
    EXPECT_EQ(program_pictureAreaRemoveFrame(0), 0);
    EXPECT_EQ(parsed_g5().areas.at(0).pages.at(0).pixels.size(), plain);
}

TEST_F(Program, ShowsNothingInAnAreaThatItsBorderFills) {
    const HVareaHeader area = area_header(ePicturesArea, 0, 0, 8, 8);
    const HVpageHeader page = page_header();
    const HVareaframeHeader border{};
    program_AddArea(0, &area);
    program_picturesAreaAddTxt(0, "x", kFont, &page);
    program_picturesAreaAddFrame(0, &border, picture("f.png", 4, 4, 0xFF0000).c_str());
    EXPECT_TRUE(parsed_g5({.borderPixels = {2 * 8 * 4 / 8}}).areas.at(0).pages.empty());
}

} // namespace
} // namespace qm::test
