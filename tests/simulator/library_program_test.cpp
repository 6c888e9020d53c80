// Programs that the library builds look on the controller's screen as their previews do.
#include "../program_file/fixture.h"

#include "simulator/playback/ProgramPlayer.h"
#include "simulator/playback/program_parser.h"

#include <cairo.h>
#include <cmath>
#include <memory>

namespace qm::sim {
namespace {

namespace lib = qm::test;
using namespace std::chrono_literals;

constexpr int kWidth = 96, kHeight = 40;

struct ScreenCase {
    const char* name;
    bool six;
    Ouint16 type;
    ScreenColor color;
};

Image preview_of(Ouint16 area, int number) {
    getPageData page{};
    EXPECT_EQ(program_pictureAreaGetOnePage(area, number, &page), 0);
    struct Source {
        const Ouint8* next;
        std::size_t left;
    } source{page.fileAddre, page.pageLen};
    const auto read = [](void* closure, unsigned char* data, unsigned length) {
        auto& from = *static_cast<Source*>(closure);
        if (length > from.left) return CAIRO_STATUS_READ_ERROR;
        std::copy_n(from.next, length, data);
        from.next += length;
        from.left -= length;
        return CAIRO_STATUS_SUCCESS;
    };
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> png(
        cairo_image_surface_create_from_png_stream(read, &source), cairo_surface_destroy);
    Image image(cairo_image_surface_get_width(png.get()), cairo_image_surface_get_height(png.get()));
    const unsigned char* rows = cairo_image_surface_get_data(png.get());
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            const unsigned char* bgra = rows + y * cairo_image_surface_get_stride(png.get()) + 4 * x;
            image.set(x, y, {bgra[2], bgra[1], bgra[0]});
        }
    return image;
}

// What is left of a colour on the LEDs.
class Leds {
  public:
    explicit Leds(PixelFormat format) : m_format(format) {}

    [[nodiscard]] Rgb shine(Rgb color) const {
        if (m_format.mode == TransferMode::rgb888) return color;
        if (m_format.mode == TransferMode::rgb565)
            return {wide(color.r, 5), wide(color.g, 6), wide(color.b, 5)};
        const bool r = color.r > 96, g = color.g > 96, b = color.b > 96;
        if (m_format.color == ScreenColor::single) return {full(r || g || b), 0, 0};
        if (m_format.color == ScreenColor::dual) return {full(r || (b && !g)), full(g), 0};
        return {full(r), full(g), full(b)};
    }

  private:
    static std::uint8_t full(bool lit) { return lit ? 255 : 0; }
    // Gamma of 2, so many bits, and back to 8 of them.
    static std::uint8_t wide(std::uint8_t value, int bits) {
        const double darker = 256.0 * std::pow((value + 0.5) / 256.0, 2) - 0.5;
        const int kept = static_cast<int>(std::max(0.0, darker)) >> (8 - bits);
        return static_cast<std::uint8_t>(kept << (8 - bits) | kept >> (2 * bits - 8));
    }

    PixelFormat m_format;
};

class LibraryProgram : public lib::Program, public testing::WithParamInterface<ScreenCase> {
  protected:
    LibraryProgram() : m_format{packing_of(GetParam().type), GetParam().color}, m_leds(m_format) {
        program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(GetParam().color), GetParam().type,
                                    DOUBLE_COLOR_PIXTYPE_1);
        const HVprogramHeader five = lib::program_header(7);
        const HVprogramHeader_G6 six = lib::program_header_g6(7);
        EXPECT_EQ(GetParam().six ? program_addProgram_G6(&six) : program_addProgram(&five), 0);
    }

    static void add_area(Ouint16 id, Rect rect) {
        const auto u16 = [](int value) { return static_cast<Ouint16>(value); };
        const HVareaHeader five =
            lib::area_header(ePicturesArea, u16(rect.x), u16(rect.y), u16(rect.width), u16(rect.height));
        const HVareaHeader_G6 six =
            lib::area_header_g6(ePicturesArea, u16(rect.x), u16(rect.y), u16(rect.width), u16(rect.height));
        EXPECT_EQ(GetParam().six ? program_addArea_G6(id, &six) : program_AddArea(id, &five), 0);
    }
    static void add_text(Ouint16 id, const char* text, Ouint8 mode, E_arrMode lines,
                         Ouint32 color = eYellow) {
        HVpageHeader five = lib::page_header(mode, lines);
        HVpageHeader_G6 six = lib::page_header_g6(mode, lines);
        five.color = six.color = color;
        EXPECT_EQ(GetParam().six ? program_picturesAreaAddTxt_G6(id, text, lib::kFont, &six)
                                 : program_picturesAreaAddTxt(id, text, lib::kFont, &five),
                  0);
    }
    static void add_picture(Ouint16 id, const std::string& path) {
        const HVpageHeader five = lib::page_header();
        const HVpageHeader_G6 six = lib::page_header_g6();
        EXPECT_EQ(GetParam().six ? program_pictureAreaAddPic_G6(id, 1, &six, path.c_str())
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
        EXPECT_EQ(GetParam().six ? program_addFrame_G6(&six, path.c_str())
                                 : program_addFrame(&five, path.c_str()),
                  0);
    }

    // Hands the files over.
    [[nodiscard]] std::unique_ptr<ProgramPlayer> played() const {
        const lib::Program::File file = GetParam().six ? integrate_g6() : integrate_g5();
        sim::ParsedProgram parsed = GetParam().six ? parse_program(file.bytes, file.data, m_format)
                                                   : parse_program(file.bytes, m_format);
        if (const auto* error = std::get_if<std::string>(&parsed)) {
            ADD_FAILURE() << *error;
            parsed = sim::Program{};
        }
        return std::make_unique<ProgramPlayer>(std::get<sim::Program>(std::move(parsed)), kWidth, kHeight,
                                               m_format);
    }

    void paint(Image& image, Rect rect, Rgb color) const {
        for (int y = 0; y < rect.height; ++y)
            for (int x = 0; x < rect.width; ++x) image.set(rect.x + x, rect.y + y, m_leds.shine(color));
    }
    void paste(Image& image, const Image& page, int left, int top) const {
        for (int y = 0; y < page.height; ++y)
            for (int x = 0; x < page.width; ++x) image.set(left + x, top + y, m_leds.shine(page.at(x, y)));
    }
    static void expect_same(const Image& shown, const Image& expected) {
        int different = 0;
        for (int y = 0; y < expected.height; ++y)
            for (int x = 0; x < expected.width; ++x) different += shown.at(x, y) != expected.at(x, y);
        EXPECT_EQ(different, 0) << "pixels";
        EXPECT_NE(shown, Image(kWidth, kHeight)) << "something is lit";
    }

    const PixelFormat m_format;
    const Leds m_leds;
};

constexpr Time kStay = 5s; // of the pages that the fixture makes

// Page after page of text, then a picture, each in its place inside the border.
TEST_P(LibraryProgram, ShowsThePagesOfABorderedArea) {
    add_area(1, {11, 5, 61, 21});
    add_text(1, "one two three four five six", 1, MULTILINE);
    add_area_border(1, 12, picture("border.png", 12, 3, 0xFF0000));
    add_picture(1, picture("picture.png", 20, 10, 0x80C8FF));
    const auto player = played();
    const int pages = static_cast<int>(player->program().areas.at(0).pages.size());
    ASSERT_GE(pages, 3);
    for (int page = 0; page < pages; ++page) {
        Image expected(kWidth, kHeight);
        paint(expected, {11, 5, 61, 21}, {255, 0, 0});
        paint(expected, {14, 8, 55, 15}, {});
        paste(expected, preview_of(1, page), 14, 8);
        expect_same(player->picture(page * kStay), expected);
    }
}

TEST_P(LibraryProgram, ShowsTheScreenBorderAndAreasOverOneAnother) {
    add_screen_border(16, 2, picture("border.png", 16, 2, 0x00FF00));
    add_area(1, {3, 3, 40, 16});
    add_text(1, "below", 1, MULTILINE);
    add_area(2, {30, 10, 50, 20});
    add_text(2, "above", 1, MULTILINE, eRed);
    Image expected(kWidth, kHeight);
    paint(expected, {0, 0, kWidth, kHeight}, {0, 255, 0});
    paint(expected, {2, 2, kWidth - 4, kHeight - 4}, {});
    paste(expected, preview_of(1, 0), 3, 3);
    paste(expected, preview_of(2, 0), 30, 10);
    expect_same(played()->picture(0ms), expected);
}

// Of generation 6 only.
class LibraryBackground : public LibraryProgram {};

TEST_P(LibraryBackground, LiesBelowTheAreas) {
    add_area(1, {20, 8, 50, 20});
    add_text(1, "text", 1, MULTILINE, eRed);
    const HVareaHeader_G6 area = lib::area_header_g6(eGlobalBackGroundArea, 0, 0, kWidth, kHeight);
    const HVpageHeader_G6 page = lib::page_header_g6();
    program_addArea_G6(2, &area);
    program_backGroundColor_G6(2, &page, eBlue);
    Image expected(kWidth, kHeight);
    paint(expected, {0, 0, kWidth, kHeight}, {0, 0, 255});
    paste(expected, preview_of(1, 0), 20, 8);
    expect_same(played()->picture(0ms), expected);
}

TEST_P(LibraryProgram, KeepsItsPlayPeriods) {
    HVprogramppGrp_G56 periods{};
    periods.playTimeGrpNum = 8;
    for (Ouint8 i = 0; i < 8; ++i) periods.timeGrp[i] = {i, 0, 0, static_cast<Ouint8>(i + 1), 0, 0};
    EXPECT_EQ(GetParam().six ? program_addPlayPeriodGrp_G6(&periods) : program_addPlayPeriodGrp(&periods), 0);
    add_screen_border(16, 2, picture("border.png", 16, 2, 0xFFFFFF));
    add_area(1, {3, 3, 40, 16});
    add_text(1, "x", 1, MULTILINE);
    const auto player = played();
    ASSERT_EQ(player->program().periods.size(), 8U);
    EXPECT_EQ(player->program().periods[7].last, 8h);
    ASSERT_TRUE(player->program().border);
    EXPECT_EQ(player->program().border->thickness, 2);
}

constexpr ScreenCase kScreens[] = {{"Single5", false, lib::kMode0, ScreenColor::single},
                                   {"Dual5", false, lib::kMode0, ScreenColor::dual},
                                   {"Three5", false, lib::kMode0, ScreenColor::three},
                                   {"Full5", false, lib::kMode5, ScreenColor::full},
                                   {"Single6", true, lib::kMode4, ScreenColor::single},
                                   {"Dual6", true, lib::kMode4, ScreenColor::dual},
                                   {"Three6", true, lib::kMode4, ScreenColor::three},
                                   {"Full6Of16Bits", true, lib::kMode3, ScreenColor::full},
                                   {"Full6Of24Bits", true, lib::kMode5, ScreenColor::full}};

std::string name_of(const testing::TestParamInfo<ScreenCase>& screen) { return screen.param.name; }

INSTANTIATE_TEST_SUITE_P(, LibraryProgram, testing::ValuesIn(kScreens), name_of);
INSTANTIATE_TEST_SUITE_P(, LibraryBackground, testing::ValuesIn(kScreens + 4, kScreens + 9), name_of);

} // namespace
} // namespace qm::sim
