// Borders around the screen and around areas, and backgrounds.
#include "fixture.h"

namespace qm::test {
namespace {

const std::string kMissing = "Error:Can't find frame png.\n";

TEST_F(Program, OfGeneration5TakesAScreenBorder) {
    const HVscreenframeHeader header{1, 2, 3, 4, 5, 0x0607};
    EXPECT_EQ(program_addFrame(&header, picture("f.png", 16, 2, 0xFF0000).c_str()), 0);
    EXPECT_THAT(Bytes(integrate_g5().bytes).subspan(20, 15),
                is_hex("01 02 03 04 05 07 06 FF 00 FF 00 FF 00 FF 00"))
        << "green dark, red lit";
    EXPECT_TRUE(parsed_g5().border);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_changeFrame(&header, "missing.png"), 0); }), kMissing);
    EXPECT_FALSE(parsed_g5().border);
    program_addFrame(&header, picture("f.png", 16, 2, 0xFF0000).c_str());
    EXPECT_EQ(program_removeFrame(), 0);
    EXPECT_FALSE(parsed_g5().border);
}

TEST_F(Program, OfGeneration6TakesOneScreenBorder) {
    begin(kSixOfPlanes8);
    const HVscreenframeHeader_G6 header{2, 3, 4, 5, 6, 7};
    const std::string pattern = picture("f.png", 16, 2, 0xFF0000);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_changeFrame_G6(&header, pattern.c_str()), -1); }),
              "Error:No frame have been added.\n");
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_addFrame_G6(&header, "missing.png"), -1); }), kMissing);
    EXPECT_EQ(program_addFrame_G6(&header, pattern.c_str()), 0);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_addFrame_G6(&header, pattern.c_str()), -1); }), "");
    const HVscreenframeHeader_G6 changed{9, 3, 4, 5, 6, 7};
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_changeFrame_G6(&changed, "missing.png"), -1); }), kMissing);
    EXPECT_THAT(Bytes(integrate_g6().bytes).subspan(30, 22),
                is_hex("01 09 03 04 05 06 07 00*7 FF 00 FF 00 FF 00 FF 00"))
        << "the pattern stays, and has the new effect";
    EXPECT_TRUE(parsed_g6().border);
    EXPECT_EQ(program_removeFrame_G6(), 0);
    EXPECT_FALSE(parsed_g6().border);
}

TEST_F(Program, ShrinksTheContentsOfABorderedArea) {
    const HVpageHeader page = page_header();
    const HVareaframeHeader border{0, 2, 3, 4, 5, 0x0607};
    add_area(0, ePicturesArea, {8, 4, 64, 32});
    program_picturesAreaAddTxt(0, "bordered", kFont, &page);
    EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_picturesAreaAddFrame(0, &border, "missing.png"), 0); }),
              kMissing);
    EXPECT_FALSE(parsed_g5().areas.at(0).border);

    EXPECT_EQ(program_picturesAreaAddFrame(0, &border, picture("f.png", 16, 2, 0xFF0000).c_str()), 0);
    EXPECT_EQ(program_picturesAreaAddFrame(0, &border, picture("g.png", 16, 8, 0xFF0000).c_str()), 0)
        << "ignored";
    const sim::ProgramArea area = parsed_g5().areas.at(0);
    EXPECT_THAT(Bytes(integrate_g5().bytes).subspan(36, 7), is_hex("01 02 03 04 05 07 06"));
    EXPECT_EQ(area.rect, (sim::Rect{8, 4, 64, 32})) << "the area itself stays";
    EXPECT_EQ(area.inside(), (sim::Rect{10, 6, 60, 28})) << "which is what its page fills";
    EXPECT_EQ(area.pages.at(0).valid_len, 60);
    EXPECT_EQ(program_pictureAreaRemoveFrame(0), 0);
    EXPECT_FALSE(parsed_g5().areas.at(0).border);
}

TEST_F(Program, ShowsNothingInAnAreaThatItsBorderFills) {
    const HVpageHeader page = page_header();
    const HVareaframeHeader border{};
    add_area(0, ePicturesArea, {0, 0, 8, 8});
    program_picturesAreaAddTxt(0, "x", kFont, &page);
    program_picturesAreaAddFrame(0, &border, picture("f.png", 4, 4, 0xFF0000).c_str());
    EXPECT_TRUE(parsed_g5().areas.at(0).pages.empty());
}

class Background : public Program {
  protected:
    Background() {
        begin(kSixOfPlanes8);
        add_area(3, eGlobalBackGroundArea, {0, 0, 16, 8});
    }
    HVpageHeader_G6 m_page = page_header_g6(9);
};

TEST_F(Background, OfNothingHasNoPages) {
    const sim::StoredProgram program = parsed();
    EXPECT_TRUE(program.background);
    EXPECT_TRUE(program.areas.at(0).pages.empty());
}

TEST_F(Background, OfOneColourHidesPicturesAndTakesNoEffect) {
    program_backGroundPic_G6(3, 1, &m_page, picture("a.png", 16, 8, 0xFF0000).c_str());
    EXPECT_EQ(program_backGroundColor_G6(3, &m_page, eGreen), 0);
    auto pages = parsed().areas.at(0).pages;
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0].display_mode, 0) << "the area's own header, which nothing has set";
    EXPECT_THAT(Bytes(pages[0].pixels).first(2), is_hex("00 FF")) << "green lit, red dark";
    program_backGroundColor_G6(3, &m_page, 0xEEFFEEFF);
    pages = parsed().areas.at(0).pages;
    ASSERT_EQ(pages.size(), 1U) << "no colour: the picture again";
    EXPECT_EQ(pages[0].display_mode, 9);
}

TEST_F(Background, ShowsItsPicturesInOrder) {
    program_backGroundPic_G6(3, 1, &m_page, picture("a.png", 16, 8, 0xFF0000).c_str());
    program_backGroundPic_G6(3, 2, &m_page, "missing.png");
    program_backGroundPic_G6(3, 3, &m_page, picture("b.png", 16, 8, 0x00FF00).c_str());
    sim::StoredProgram program;
    EXPECT_EQ(printed_by([&] { program = parsed(); }), "Error:The picture does not exist.ID:2\n");
    ASSERT_EQ(program.areas.at(0).pages.size(), 2U);
    EXPECT_THAT(Bytes(program.areas[0].pages[0].pixels).first(2), is_hex("FF 00"));
    EXPECT_THAT(Bytes(program.areas[0].pages[1].pixels).first(2), is_hex("00 FF"));
}

} // namespace
} // namespace qm::test
