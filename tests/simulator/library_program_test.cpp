// Programs that the library builds look on the controller's screen as their previews do.
#include "../e2e/drawing.h"
#include "../program_file/fixture.h"
#include "read_png.h"

#include <fstream>

namespace qm::sim {
namespace {

namespace lib = qm::test;
using namespace std::chrono_literals;

constexpr int kWidth = 96, kHeight = 40;

Image preview_of(Ouint16 area, int number) {
    getPageData page{};
    EXPECT_EQ(program_pictureAreaGetOnePage(area, number, &page), 0);
    const auto* bytes = reinterpret_cast<const char*>(page.fileAddre);
    std::ofstream("preview.png", std::ios::binary).write(bytes, page.pageLen);
    return lib::read_png("preview.png", CAIRO_FORMAT_ARGB32);
}

class LibraryProgram : public lib::Program, public testing::WithParamInterface<lib::ScreenKind> {
  protected:
    LibraryProgram() { begin(GetParam()); }

    static void add_text(Ouint16 id, const char* text, Ouint8 mode, E_arrMode lines,
                         Ouint32 color = eYellow) {
        HVpageHeader five = lib::page_header(mode, lines);
        HVpageHeader_G6 six = lib::page_header_g6(mode, lines);
        five.color = six.color = color;
        EXPECT_EQ(is_six() ? program_picturesAreaAddTxt_G6(id, text, lib::kFont, &six)
                           : program_picturesAreaAddTxt(id, text, lib::kFont, &five),
                  0);
    }
    static void add_picture(Ouint16 id, const std::string& path) {
        const HVpageHeader five = lib::page_header();
        const HVpageHeader_G6 six = lib::page_header_g6();
        EXPECT_EQ(is_six() ? program_pictureAreaAddPic_G6(id, 1, &six, path.c_str())
                           : program_pictureAreaAddPic(id, 1, &five, path.c_str()),
                  0);
    }
    static void add_area_border(Ouint16 id, Ouint8 length, const std::string& path) {
        HVareaframeHeader header{};
        header.AreaFWidth = length;
        EXPECT_EQ(program_picturesAreaAddFrame(id, &header, path.c_str()), 0);
    }
    static void add_screen_border(Ouint8 length, Ouint8 thickness, const std::string& path) {
        HVscreenframeHeader five{};
        five.FrameDispFlag = 1;
        five.FrameWidth = thickness;
        HVscreenframeHeader_G6 six{};
        six.FrameUnitLength = length;
        six.FrameUnitWidth = thickness;
        EXPECT_EQ(is_six() ? program_addFrame_G6(&six, path.c_str()) : program_addFrame(&five, path.c_str()),
                  0);
    }

    void paint(Image& image, Rect rect, Rgb color) const {
        for (int y = 0; y < rect.height; ++y)
            for (int x = 0; x < rect.width; ++x) image.set(rect.x + x, rect.y + y, shown_by(m_leds, color));
    }
    void paste(Image& image, const Image& page, int left, int top) const {
        for (int y = 0; y < page.height; ++y)
            for (int x = 0; x < page.width; ++x)
                image.set(left + x, top + y, shown_by(m_leds, page.at(x, y)));
    }
    static void expect_same(const Image& shown, const Image& expected) {
        EXPECT_EQ(lib::differing_pixels(shown, expected), 0);
        EXPECT_NE(shown, Image(kWidth, kHeight)) << "something is lit";
    }

    const lib::Leds m_leds = lib::leds_of(GetParam().format());
};

constexpr Milliseconds kStay = 5s; // of the pages that the fixture makes

// Page after page of text, then a picture, each in its place inside the border.
TEST_P(LibraryProgram, ShowsThePagesOfABorderedArea) {
    add_area(1, ePicturesArea, {11, 5, 61, 21});
    add_text(1, "one two three four five six", 1, MULTILINE);
    add_area_border(1, 12, picture("border.png", 12, 3, 0xFF0000));
    add_picture(1, picture("picture.png", 20, 10, 0x80C8FF));
    const auto player = played(kWidth, kHeight);
    const int pages = static_cast<int>(parsed().areas.at(0).pages.size());
    ASSERT_GE(pages, 3);
    for (int page = 0; page < pages; ++page) {
        Image expected(kWidth, kHeight);
        paint(expected, {11, 5, 61, 21}, {255, 0, 0});
        paint(expected, {14, 8, 55, 15}, {});
        paste(expected, preview_of(1, page), 14, 8);
        expect_same(player.screen({page * kStay, {}}), expected);
    }
}

TEST_P(LibraryProgram, ShowsTheScreenBorderAndAreasOverOneAnother) {
    add_screen_border(16, 2, picture("border.png", 16, 2, 0x00FF00));
    add_area(1, ePicturesArea, {3, 3, 40, 16});
    add_text(1, "below", 1, MULTILINE);
    add_area(2, ePicturesArea, {30, 10, 50, 20});
    add_text(2, "above", 1, MULTILINE, eRed);
    Image expected(kWidth, kHeight);
    paint(expected, {0, 0, kWidth, kHeight}, {0, 255, 0});
    paint(expected, {2, 2, kWidth - 4, kHeight - 4}, {});
    paste(expected, preview_of(1, 0), 3, 3);
    paste(expected, preview_of(2, 0), 30, 10);
    expect_same(played(kWidth, kHeight).screen({}), expected);
}

// Of generation 6 only.
class LibraryBackground : public LibraryProgram {};

TEST_P(LibraryBackground, LiesBelowTheAreas) {
    add_area(1, ePicturesArea, {20, 8, 50, 20});
    add_text(1, "text", 1, MULTILINE, eRed);
    const HVpageHeader_G6 page = lib::page_header_g6();
    add_area(2, eGlobalBackGroundArea, {0, 0, kWidth, kHeight});
    program_backGroundColor_G6(2, &page, eBlue);
    Image expected(kWidth, kHeight);
    paint(expected, {0, 0, kWidth, kHeight}, {0, 0, 255});
    paste(expected, preview_of(1, 0), 20, 8);
    expect_same(played(kWidth, kHeight).screen({}), expected);
}

constexpr lib::ScreenKind kScreens[] = {{"Single5", false, lib::kMode0, ScreenColor::single},
                                        {"Dual5", false, lib::kMode0, ScreenColor::dual},
                                        {"Three5", false, lib::kMode0, ScreenColor::three},
                                        {"Full5", false, lib::kMode5, ScreenColor::full},
                                        {"Single6", true, lib::kMode4, ScreenColor::single},
                                        {"Dual6", true, lib::kMode4, ScreenColor::dual},
                                        {"Three6", true, lib::kMode4, ScreenColor::three},
                                        {"Full6Of16Bits", true, lib::kMode3, ScreenColor::full},
                                        {"Full6Of24Bits", true, lib::kMode5, ScreenColor::full}};

std::string name_of(const testing::TestParamInfo<lib::ScreenKind>& screen) { return screen.param.name; }

INSTANTIATE_TEST_SUITE_P(, LibraryProgram, testing::ValuesIn(kScreens), name_of);
INSTANTIATE_TEST_SUITE_P(, LibraryBackground, testing::ValuesIn(kScreens + 4, kScreens + 9), name_of);

} // namespace
} // namespace qm::sim
