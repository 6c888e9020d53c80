#include "program/pixels/pixel_packing.h"

#include "hex.h"
#include "reference_conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <random>
#include <string>
#include <utility>

namespace qm {
namespace {

using Data = std::vector<Ouint8>;

constexpr Ouint32 kBlack = 0x000000, kRed = 0xFF0000, kGreen = 0x00FF00, kBlue = 0x0000FF;
constexpr Ouint32 kYellow = 0xFFFF00, kMagenta = 0xFF00FF, kCyan = 0x00FFFF, kWhite = 0xFFFFFF;

// A hint at the first difference, since pictures are large.
testing::AssertionResult same_bytes(const Data& expected, const Data& actual) {
    if (expected == actual) return testing::AssertionSuccess();
    const std::size_t common = std::min(expected.size(), actual.size());
    const auto at = static_cast<std::size_t>(
        std::mismatch(expected.begin(), expected.begin() + static_cast<std::ptrdiff_t>(common),
                      actual.begin())
            .first -
        expected.begin());
    const auto shown = [at](Bytes bytes) {
        return test::hex_text(bytes.subspan(at, std::min<std::size_t>(16, bytes.size() - at)));
    };
    return testing::AssertionFailure()
           << expected.size() << " bytes expected, " << actual.size() << " written; from byte " << at
           << "\n  expected " << shown(expected) << "\n  actual   " << shown(actual);
}

// Converts into a buffer between guards; a broken guard or a wrong count shows as a failure.
Data convert(const Ouint8* pixels, int left, int width, int height, const PixelLayout& layout) {
    constexpr std::size_t kGuard = 33; // odd, so that the output is not aligned
    constexpr Ouint8 kMark = 0x6B;
    const std::size_t size = pixel_data_size(left, width, height, layout);
    Data buffer(size + 2 * kGuard, kMark);
    EXPECT_EQ(size, convert_pixels(pixels, left, width, height, layout, buffer.data() + kGuard));

    const auto first = buffer.begin() + kGuard, last = buffer.end() - kGuard;
    const auto marked = [&](Ouint8 b) { return b == kMark; };
    EXPECT_TRUE(std::all_of(buffer.begin(), first, marked)) << "written in front of the output";
    EXPECT_TRUE(std::all_of(last, buffer.end(), marked)) << "written behind the output";
    return {first, last};
}

// Pixel memory of 0xRRGGBB colours, with an alpha that nobody may read.
Data argb(const std::vector<Ouint32>& colors) {
    Data pixels;
    for (const Ouint32 color : colors)
        for (const unsigned shift : {0U, 8U, 16U, 24U})
            pixels.push_back(static_cast<Ouint8>((color | 0xA5000000U) >> shift));
    return pixels;
}

// count pixels of background, with some of them in other colours.
std::vector<Ouint32> dots(std::size_t count, std::initializer_list<std::pair<std::size_t, Ouint32>> lit,
                          Ouint32 background = kBlack) {
    std::vector<Ouint32> colors(count, background);
    for (const auto& [index, color] : lit) colors[index] = color;
    return colors;
}

std::string text(const PixelLayout& layout) {
    return "colour " + std::to_string(layout.screenColor) + ", mode " + std::to_string(layout.tranMode) +
           ", double-colour type " + std::to_string(layout.doubleColorPixel) + ", unit " +
           std::to_string(layout.alignPixels);
}

// ---- Bytes worked out by hand ----

struct Example {
    const char* what;
    PixelLayout layout;
    int left, width;
    std::vector<Ouint32> colors; // whole rows of width
    const char* bytes;
};

constexpr PixelLayout kSingle{1, 0, 1, 8}, kThree{3, 0, 1, 8};
constexpr PixelLayout kDouble1{2, 0, 1, 8}, kDouble2{2, 0, 2, 8}, kDouble3{2, 0, 3, 8};
constexpr PixelLayout kWords1{1, 4, 1, 32}, kWords2{2, 4, 1, 32}, kWords3{3, 4, 1, 32};
constexpr PixelLayout kFull16{4, 3, 1, 8}, kFull24{4, 5, 1, 8}, kFullZero{4, 1, 1, 8};

void check(const std::vector<Example>& examples) {
    for (const Example& e : examples) {
        const Data pixels = argb(e.colors);
        const int height = static_cast<int>(e.colors.size()) / e.width;
        EXPECT_THAT(convert(pixels.data(), e.left, e.width, height, e.layout), test::is_hex(e.bytes))
            << e.what;
    }
}

TEST(PixelData, LedsLightAboveTheThresholdOnly) {
    check({
        {"black is dark", kSingle, 0, 8, dots(8, {}), "FF"},
        {"96 of everything is dark", kSingle, 0, 8, dots(8, {}, 0x606060), "FF"},
        {"97 of red is lit", kSingle, 0, 8, dots(8, {{0, 0x610000}}), "7F"},
        {"97 of green is lit", kSingle, 0, 8, dots(8, {{1, 0x006100}}), "BF"},
        {"97 of blue is lit", kSingle, 0, 8, dots(8, {{7, 0x000061}}), "FE"},
        {"each for itself", kThree, 0, 8, dots(8, {{0, 0x616060}, {1, 0x606160}, {2, 0x606061}}), "7F BF DF"},
    });
}

TEST(PixelData, ColoursReachTheirOwnLeds) {
    check({
        {"three colours", kThree, 0, 8, dots(8, {{0, kRed}, {1, kGreen}, {2, kBlue}, {3, kWhite}}),
         "6F AF CF"},
        // Two colours: the green byte stands first.
        {"type 1: red", kDouble1, 0, 8, dots(8, {{0, kRed}}), "FF 7F"},
        {"type 1: green", kDouble1, 0, 8, dots(8, {{0, kGreen}}), "7F FF"},
        {"type 1: blue shows as red", kDouble1, 0, 8, dots(8, {{0, kBlue}}), "FF 7F"},
        {"type 1: yellow lights both", kDouble1, 0, 8, dots(8, {{0, kYellow}}), "7F 7F"},
        {"type 1: magenta is red", kDouble1, 0, 8, dots(8, {{0, kMagenta}}), "FF 7F"},
        {"type 1: cyan is green", kDouble1, 0, 8, dots(8, {{0, kCyan}}), "7F FF"},
        {"type 2: red", kDouble2, 0, 8, dots(8, {{0, kRed}}), "7F FF"},
        {"type 2: green", kDouble2, 0, 8, dots(8, {{0, kGreen}}), "FF 7F"},
        {"type 2: blue follows red", kDouble2, 0, 8, dots(8, {{0, kBlue}}), "7F FF"},
        {"type 2: magenta is red", kDouble2, 0, 8, dots(8, {{0, kMagenta}}), "7F FF"},
        {"type 2: cyan is green", kDouble2, 0, 8, dots(8, {{0, kCyan}}), "FF 7F"},
        {"any other type is type 2", kDouble3, 0, 8, dots(8, {{0, kBlue}}), "7F FF"},
    });
}

TEST(PixelData, APictureKeepsItsPlaceInsideTheFirstByteOrWord) {
    check({
        {"3 dark bits, 10 lit, 3 dark, twice", kSingle, 3, 10, dots(20, {}, kWhite), "E0 07 E0 07"},
        {"whole bytes do not matter", kSingle, 19, 10, dots(10, {}, kWhite), "E0 07"},
        {"the right edge on a byte needs no padding", kSingle, 6, 2, dots(2, {}, kWhite), "FC"},
        {"first pixel: top bit of the last byte", kWords1, 0, 32, dots(32, {{0, kWhite}}), "FF FF FF 7F"},
        {"last pixel: low bit of the first byte", kWords1, 0, 32, dots(32, {{31, kWhite}}), "FE FF FF FF"},
        {"column 35 is bit 28", kWords1, 35, 1, dots(1, {{0, kWhite}}), "FF FF FF EF"},
        {"33 pixels take two words", kWords1, 0, 33, dots(33, {{32, kWhite}}), "FF*7 7F"},
    });
}

TEST(PixelData, PlanesFollowEachOtherWholeInWords) {
    check({
        {"red rows, green rows", kWords2, 0, 32, dots(64, {{0, kRed}, {8, kGreen}, {32 + 16, kYellow}}),
         "FF FF FF 7F FF 7F FF FF  FF FF 7F FF FF 7F FF FF"},
        {"red, green, blue", kWords3, 0, 32, dots(32, {{0, kRed}, {8, kGreen}, {16, kBlue}}),
         "FF FF FF 7F FF FF 7F FF FF 7F FF FF"},
    });
}

TEST(PixelData, FullColourPixelsKeepTheirGrades) {
    check({
        {"16 bits", kFull16, 0, 2, {kWhite, kRed, kGreen, kBlue}, "FF FF 1F 00 E0 07 00 F8"},
        {"60 becomes 13", kFull16, 3, 3, {0x3C0000, 0x003C00, 0x00003C}, "01 00 60 00 00 08"},
        {"127, 128 and 7", kFull16, 0, 3, {0x7F0000, 0x800000, 0x070707}, "07 00 08 00 00 00"},
        {"24 bits: red first, no gamma", kFull24, 3, 2, {0x010203, 0xFFFEFD}, "01 02 03 FF FE FD"},
        {"mode 1 is zeros whatever the picture", kFullZero, 3, 3, {kWhite, kWhite, kRed}, "00*6"},
    });
}

// ---- Sizes ----

TEST(PixelData, FilesAndFramesAreSizedForTheirPixels) {
    // 10 x 2 pixels at column 3: rows of 16 pixels in units of 8, of 32 in units of 32.
    constexpr std::size_t kBytes[6][6] = {
        // mode 0, 1, 2, 3, 4, 5
        {0, 0, 0, 0, 0, 0},   {4, 0, 0, 0, 8, 0},    {8, 0, 0, 0, 16, 0},
        {12, 0, 0, 0, 24, 0}, {0, 40, 0, 40, 0, 60}, {0, 0, 0, 0, 0, 0},
    };
    for (int color = 0; color <= 5; ++color)
        for (int mode = 0; mode <= 5; ++mode) {
            const PixelLayout layout{color, mode, 1, mode == 4 ? 32U : 8U};
            SCOPED_TRACE(text(layout));
            EXPECT_EQ(kBytes[color][mode], pixel_data_size(3, 10, 2, layout));
            EXPECT_EQ(kBytes[color][mode], convert(argb(dots(20, {})).data(), 3, 10, 2, layout).size());
            EXPECT_EQ(0U, pixel_data_size(3, 10, 0, layout));
        }
}

// ---- Against the plain form ----

// Pixel memory that ends where its allocation ends, so that a read beyond it is noticed.
class RandomPicture {
  public:
    RandomPicture(int width, int height, std::mt19937& random)
        : m_width(width), m_height(height),
          m_pixels(std::make_unique<Ouint8[]>(4 * static_cast<std::size_t>(width) *
                                              static_cast<std::size_t>(height))) {
        constexpr Ouint8 kTelling[] = {0, 95, 96, 97, 98, 255, 127, 128};
        const std::size_t bytes = 4 * static_cast<std::size_t>(width) * static_cast<std::size_t>(height);
        for (std::size_t i = 0; i < bytes; ++i) {
            const auto value = random();
            m_pixels[i] = value & 0x100U ? kTelling[value & 7U] : static_cast<Ouint8>(value);
        }
    }

    void compare(int left, const PixelLayout& layout) const {
        const Data actual = convert(m_pixels.get(), left, m_width, m_height, layout);
        ASSERT_TRUE(same_bytes(actual, convert(m_pixels.get(), left - 64, m_width, m_height, layout)));
        ASSERT_TRUE(same_bytes(reference::convert(m_pixels.get(), left, m_width, m_height, layout), actual))
            << m_width << " x " << m_height << " at column " << left << ", " << text(layout);
    }

  private:
    int m_width, m_height;
    std::unique_ptr<Ouint8[]> m_pixels;
};

std::vector<int> telling_widths() {
    std::vector<int> widths(70);
    std::iota(widths.begin(), widths.end(), 1);
    widths.insert(widths.end(), {127, 128, 129, 130, 4224});
    return widths;
}

class PixelDataOfScreen : public testing::TestWithParam<int> {
  protected:
    // Every mode, wiring and alignment unit; the unit is a setting of its own and does not follow the mode.
    void compare_all(const RandomPicture& picture, int left) const {
        for (int mode = 0; mode <= 5; ++mode)
            for (const int wiring : {1, 2, 3})
                for (const unsigned unit : {8U, 32U}) {
                    picture.compare(left, {GetParam(), mode, wiring, unit});
                    if (HasFatalFailure()) return;
                }
    }
};

TEST_P(PixelDataOfScreen, PicturesOfEveryWidthAndPlaceArriveAsDrawn) {
    std::mt19937 random(20240229);
    for (const int width : telling_widths()) {
        for (int left = 0; left <= 40; ++left) {
            const int height = width > 1000 ? 1 : 1 + static_cast<int>(random() % 3);
            compare_all(RandomPicture(width, height, random), left);
            if (HasFatalFailure()) return;
        }
    }
}

// 4,194,304 pixels is where a plane of a fixed size would end.
TEST_P(PixelDataOfScreen, APictureOfMoreThanFourMillionPixelsIsWhole) {
    std::mt19937 random(7);
    const RandomPicture picture(2056, 2048, random);
    for (const int mode : {0, 3, 4, 5}) picture.compare(5, {GetParam(), mode, 1, mode == 4 ? 32U : 8U});
}

INSTANTIATE_TEST_SUITE_P(Colour, PixelDataOfScreen, testing::Range(0, 6));

} // namespace
} // namespace qm
