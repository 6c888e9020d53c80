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

// Y year, M month, D day, W day of the week, H hour, N minute, S second, p half of the day; lines parted by a
// stroke.
std::string shown(const DigitalClock& clock) {
    std::string text;
    int baseline = -1;
    for (const UnitPlace& unit : clock.units) {
        if (unit.unit == ClockUnit::literal) continue;
        const int bottom = unit.y + clock.sets[unit.set].height;
        if (baseline >= 0 && unit.y > baseline) text += '|';
        baseline = bottom - 1;
        text += "YyMDHHNSpW"[static_cast<std::size_t>(unit.unit)];
    }
    return text;
}

TEST_F(LegibleClock, ShowsWholeGroupsTheTimeFirst) {
    constexpr int kNone = -1;
    const struct {
        int width, height, date, week, time;
        const char* shown;
    } cases[] = {
        {96, 32, YYYY_MM_DD_MINUS, Mon, HH_MM_SS_COLON, "YMD|W|HNS"},
        {64, 16, YYYY_MM_DD_MINUS, Mon, HH_MM_SS_COLON, "YMD|WHNS"},
        {64, 8, MM_DD_MINUS, Monday, HH_MM_COLON, "MDHN"},
        {32, 16, YYYY_MM_DD_MINUS, Mon, HH_MM_COLON, "W|HN"},
        {32, 8, YYYY_MM_DD_CHS, kNone, HH_MM_COLON, "HN"},
        {24, 16, kNone, kNone, HH_MM_SS_COLON, "HN|S"},
        {16, 32, MM_DD_MINUS, kNone, HH_MM_SS_COLON, "H|N|S"},
        {16, 32, kNone, kNone, HH_MM_AM, "H|N|p"},
        {24, 8, kNone, kNone, AM_HH_MM, "HN"},
        {16, 16, MM_DD_CHS, kNone, HH_MM_SS_COLON, "H|N"},
        {8, 8, MM_DD_MINUS, kNone, HH_MM_SS_CHS, "H"},
        {32, 8, YYYY_MM_DD_MINUS, kNone, kNone, ""},
        {32, 16, YYYY_MM_DD_MINUS, kNone, kNone, "Y|MD"},
        {24, 8, MM_DD_MINUS, Monday, kNone, "MD"},
        {4, 4, MM_DD_MINUS, Monday, HH_MM_COLON, ""},
    };
    for (const auto& c : cases)
        for (const Ouint8 underline : {Ouint8{0}, Ouint8{1}}) {
            HVtimeAreaData_G56 content = lib::time_content();
            content.linestyle = MULTILINE;
            content.fontSize = 20;
            content.fontUnderline = c.height > 8 && c.width > 32 ? underline : Ouint8{0};
            content.date_enable = c.date != kNone;
            content.datestyle = static_cast<DateStyle>(std::max(0, c.date));
            content.week_enable = c.week != kNone;
            content.weekstyle = static_cast<WeekStyle>(std::max(1, c.week));
            content.time_enable = c.time != kNone;
            content.timestyle = static_cast<TimeStyle>(std::max(0, c.time));
            EXPECT_EQ(shown(clock(content, c.width, c.height)), c.shown) << c.width << " x " << c.height;
        }
}

} // namespace
} // namespace qm::sim
