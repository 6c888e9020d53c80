// Digital clocks where there is little room: what is shown can be read.
#include "clock_fixture.h"
#include "simulator/playback/PixelReader.h"

#include <algorithm>

namespace qm::sim {
namespace {

namespace lib = qm::test;
using test::kSix;

class LegibleClock : public test::ClockProgram {
  protected:
    static DigitalClock clock(const HVtimeAreaData_G56& content, int width, int height) {
        begin(kSix, {0, 0, width, height});
        EXPECT_EQ(add(content), 0);
        return std::get<DigitalClock>(parsed().areas.at(0).clock.value().face);
    }
};

// How many pixels are lit in each row or column of a glyph.
std::vector<int> lit(const GlyphImages& set, const ByteBuffer& glyph, bool rows) {
    const PixelReader pixels(kSix.format(), {0, 0, set.width, set.height}, glyph);
    std::vector<int> counts(static_cast<std::size_t>(rows ? set.height : set.width));
    for (int y = 0; y < set.height; ++y)
        for (int x = 0; x < set.width; ++x)
            counts[static_cast<std::size_t>(rows ? y : x)] += pixels.at(x, y) != Rgb{};
    return counts;
}

// The columns left and right of all ink of a set.
std::pair<int, int> margins(const GlyphImages& set) {
    std::pair all{set.width, set.width};
    for (const ByteBuffer& glyph : set.glyphs) {
        const auto columns = lit(set, glyph, false);
        const auto dark = [](auto first, auto last) {
            return static_cast<int>(std::find_if(first, last, [](int n) { return n > 0; }) - first);
        };
        all.first = std::min(all.first, dark(columns.begin(), columns.end()));
        all.second = std::min(all.second, dark(columns.rbegin(), columns.rend()));
    }
    return all;
}

void expect_two_dots(const std::vector<int>& rows) {
    const auto gap = std::find(rows.begin(), rows.end(), 0);
    const auto below = std::find_if(gap, rows.end(), [](int n) { return n > 0; });
    EXPECT_NE(rows.front(), 0);
    EXPECT_EQ(std::vector(rows.begin(), gap), std::vector(below, rows.end())) << "the dots of a colon";
}

// In one of the fonts separators have no pixel at 7 pixels; in both the dots of some colons differ.
TEST_F(LegibleClock, SeparatesItsDigitsVisiblyAndInTheMiddle) {
    for (const char* font : {"WenQuanYi Micro Hei", "DejaVu Serif"})
        for (Ouint16 size = 5; size < 20; ++size)
            for (const char separator : {':', '-', '/'}) {
                HVtimeAreaData_G56 content = lib::time_content();
                content.date_enable = separator != ':';
                content.time_enable = separator == ':';
                content.datestyle = separator == '-' ? YYYY_MM_DD_MINUS : MM_DD_VIRGURE;
                content.fontName = font;
                content.fontSize = size;
                content.fontBold = size % 2;
                const auto sets = clock(content, 320, 40).sets;
                ASSERT_EQ(sets.size(), 2U) << "digits, and the separator";
                const auto [digitLeft, digitRight] = margins(sets[0]);
                const auto [left, right] = margins(sets[1]);
                SCOPED_TRACE(std::string(font) + ", " + std::to_string(size) + " points, " + separator);
                EXPECT_EQ(digitRight + left, right + digitLeft);
                EXPECT_GT(digitRight + left, 0) << "it touches no digit";
                const auto rows = lit(sets[1], sets[1].glyphs.at(0), true);
                EXPECT_GT(*std::max_element(rows.begin(), rows.end()), separator == '-' ? 1 : 0);
                if (separator == ':') expect_two_dots(rows);
            }
}

} // namespace
} // namespace qm::sim
