#include "fixture.h"
#include "hex.h"

namespace qm::test {
namespace {

class Background : public Program {
  protected:
    Background() {
        const HVareaHeader_G6 area = area_header_g6(eGlobalBackGroundArea, 0, 0, 16, 8);
        EXPECT_EQ(program_addArea_G6(3, &area), 0);
    }
    HVpageHeader_G6 m_page = page_header_g6(9);
};

TEST_F(Background, OfNothingHasNoPages) {
    const ParsedProgram program = parsed_g6();
    EXPECT_TRUE(program.background);
    EXPECT_EQ(program.areas.at(0).length, 19U + 1 + 1);
    EXPECT_TRUE(program.areas[0].pages.empty());
}

TEST_F(Background, OfOneColourHidesPicturesAndTakesNoEffect) {
    program_backGroundPic_G6(3, 1, &m_page, picture("a.png", 16, 8, 0xFF0000).c_str());
    EXPECT_EQ(program_backGroundColor_G6(3, &m_page, eGreen), 0);
    auto pages = parsed_g6().areas.at(0).pages;
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_EQ(pages[0].displayMode, 0) << "the area's own header, which nothing has set";
    EXPECT_EQ(pages[0].pixels[0], 0x00) << "green lit";
    EXPECT_EQ(pages[0].pixels[1], 0xFF) << "red dark";
    program_backGroundColor_G6(3, &m_page, 0xEEFFEEFF);
    pages = parsed_g6().areas.at(0).pages;
    ASSERT_EQ(pages.size(), 1U) << "no colour: the picture again";
    EXPECT_EQ(pages[0].displayMode, 9);
}

TEST_F(Background, ShowsItsPicturesInOrder) {
    program_backGroundPic_G6(3, 1, &m_page, picture("a.png", 16, 8, 0xFF0000).c_str());
    program_backGroundPic_G6(3, 2, &m_page, "missing.png");
    program_backGroundPic_G6(3, 3, &m_page, picture("b.png", 16, 8, 0x00FF00).c_str());
    ParsedProgram program;
    EXPECT_EQ(printed_by([&] { program = parsed_g6(); }), "Error:The picture does not exist.ID:2\n");
    ASSERT_EQ(program.areas.at(0).pages.size(), 2U);
    EXPECT_THAT(Bytes(program.areas[0].pages[0].pixels).first(2), is_hex("FF 00"));
    EXPECT_THAT(Bytes(program.areas[0].pages[1].pixels).first(2), is_hex("00 FF"));
}

} // namespace
} // namespace qm::test
