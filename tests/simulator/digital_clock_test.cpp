// What a digital clock shows is, at every moment, the text of its format as cairo draws it.
#include "../e2e/drawing.h"
#include "clock_fixture.h"

#include <ctime>
#include <map>
#include <random>
#include <set>

namespace qm::sim {
namespace {

namespace lib = qm::test;
using namespace std::chrono;
using test::kFive;
using test::kSix;
using test::ScreenKind;

constexpr char kFont[] = "WenQuanYi Micro Hei"; // it has every character
constexpr int kWidth = 320, kHeight = 40;

// The text of each group: date, weekday, time; empty for one that is not shown.
struct Texts {
    std::string date, week, time;
};

std::string formatted(const char* format, const std::tm& now) {
    char text[64];
    return std::strftime(text, sizeof text, format, &now) > 0 ? text : "";
}

std::string date_text(int style, const std::tm& now) {
    const char* const formats[] = {"%Y-%m-%d", "%Y/%m/%d", "%d-%m-%Y", "%d/%m/%Y",
                                   "%m-%d",    "%m/%d",    "%m月%d日", "%Y年%m月%d日"};
    return formatted(formats[style], now);
}

std::string time_text(int style, const std::tm& now) {
    const char* const formats[] = {"%H:%M:%S", "%H时%M分%S秒", "%H:%M", "%H时%M分", "%p %I:%M", "%I:%M %p"};
    return formatted(formats[style], now);
}

std::string week_text(int style, const std::tm& now) {
    const char* const chinese[] = {"星期日", "星期一", "星期二", "星期三", "星期四", "星期五", "星期六"};
    if (style == Monday_CHS) return chinese[now.tm_wday];
    return formatted(style == Mon ? "%a" : "%A", now);
}

std::tm civil(LocalSeconds moment) {
    const std::time_t seconds = moment.time_since_epoch().count();
    std::tm result{};
    gmtime_r(&seconds, &result);
    return result;
}

Texts texts_of(const HVtimeAreaData_G56& content, LocalSeconds moment) {
    const std::tm now = civil(moment);
    Texts texts;
    if (content.date_enable) texts.date = date_text(static_cast<int>(content.datestyle), now);
    if (content.week_enable) texts.week = week_text(static_cast<int>(content.weekstyle), now);
    if (content.time_enable) texts.time = time_text(static_cast<int>(content.timestyle), now);
    return texts;
}

// The lit pixels of a picture, from their own top left corner on.
struct Ink {
    int left = 0, top = 0, width = 0, height = 0;
    std::set<std::pair<int, int>> lit; // x, y from that corner

    bool same_as(const Ink& other) const {
        return width == other.width && height == other.height && lit == other.lit;
    }
};

template <class Lit> Ink ink_of(int width, int height, Lit&& lit) {
    Ink ink;
    std::set<std::pair<int, int>> found;
    int left = width, top = height, right = -1, bottom = -1;
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            if (lit(x, y)) {
                found.emplace(x, y);
                left = std::min(left, x);
                right = std::max(right, x);
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
    if (found.empty()) return ink;
    ink = {left, top, right - left + 1, bottom - top + 1, {}};
    for (const auto& [x, y] : found) ink.lit.emplace(x - left, y - top);
    return ink;
}

// A text as cairo draws it, its baseline at row 64. Most cells show what others have shown before.
constexpr int kBaseline = 64;
class Drawn {
  public:
    Drawn(bool bold, bool italic) : m_bold(bold), m_italic(italic) {}

    // Slanted separators are made even.
    [[nodiscard]] bool evens(const std::string& text) const {
        return m_italic && (text == ":" || text == "-");
    }
    const Ink& ink(const std::string& text) {
        const auto [known, is_new] = m_known.try_emplace(text);
        if (is_new) {
            const Image drawn = lib::text_image(kFont, 16, text, {255, 255, 255}, 256, 128,
                                                {32, kBaseline, m_bold, m_italic});
            known->second = ink_of(256, 128, [&](int x, int y) { return drawn.at(x, y).b > 96; });
        }
        return known->second;
    }

  private:
    bool m_bold, m_italic;
    std::map<std::string, Ink> m_known;
};

std::size_t length_of_character(const std::string& text, std::size_t at) {
    const auto first = static_cast<unsigned char>(text[at]);
    return first < 0x80 ? 1 : first < 0xE0 ? 2 : 3;
}

// The cells of an area from left to right, line after line, with the text that should stand in each.
struct Cell {
    Rect rect;
    std::string text;
};

std::vector<Cell> cells_of(const DigitalClock& clock, const Texts& texts) {
    std::string all = texts.date + texts.week + texts.time;
    std::erase(all, ' ');
    std::vector<Cell> cells;
    std::size_t at = texts.date.size(), next = 0;
    const std::size_t week_at = at;
    for (const UnitPlace& unit : clock.units) {
        const GlyphImages& set = clock.sets[unit.set];
        for (int i = 0; i < cells_of(unit.unit); ++i) {
            std::size_t length = 0;
            if (unit.unit == ClockUnit::weekday)
                length = texts.week.size();
            else if (unit.unit == ClockUnit::am_pm)
                length = 2;
            else if (next < all.size())
                length = length_of_character(all, next);
            EXPECT_TRUE(unit.unit != ClockUnit::weekday || next == week_at);
            cells.push_back({{unit.x + i * set.width, unit.y, set.width, set.height},
                             all.substr(std::min(next, all.size()), length)});
            next += length;
        }
    }
    EXPECT_EQ(next, all.size()) << "every character of " << all << " has a cell";
    return cells;
}

// Compares a screen with what its cells should show. Gives the rows of the baselines.
std::set<int> compare(const Image& screen, const std::vector<Cell>& cells, Drawn& drawn, Rgb color) {
    std::set<int> baselines;
    Image expected(screen.width, screen.height);
    for (const Cell& cell : cells) {
        const Ink& wanted = drawn.ink(cell.text);
        const Ink shown = ink_of(cell.rect.width, cell.rect.height, [&](int x, int y) {
            return screen.at(cell.rect.x + x, cell.rect.y + y) != Rgb{};
        });
        EXPECT_TRUE(shown.same_as(wanted) || drawn.evens(cell.text))
            << cell.text << " at " << cell.rect.x << ", " << cell.rect.y;
        for (const auto& [x, y] : shown.lit)
            expected.set(cell.rect.x + shown.left + x, cell.rect.y + shown.top + y, color);
        if (!drawn.evens(cell.text)) baselines.insert(cell.rect.y + shown.top + kBaseline - wanted.top);
    }
    EXPECT_EQ(screen, expected) << "nothing else is lit, and all of it in the clock's colour";
    return baselines;
}

HVtimeAreaData_G56 content_of(int date, int week, int time) {
    HVtimeAreaData_G56 content{};
    content.color = eYellow;
    content.fontName = kFont;
    content.fontSize = 12;
    content.fontAlign = 1;
    content.date_enable = date >= 0;
    content.datestyle = static_cast<DateStyle>(std::max(0, date));
    content.week_enable = week > 0;
    content.weekstyle = static_cast<WeekStyle>(std::max(0, week));
    content.time_enable = time >= 0;
    content.timestyle = static_cast<TimeStyle>(std::max(0, time));
    return content;
}

LocalSeconds at(int y, unsigned m, unsigned d, int hour, int minute, int second) {
    return local_days(year(y) / month(m) / day(d)) + hours(hour) + minutes(minute) + seconds(second);
}

// Ends and beginnings of days, months, leap years and halves of the day; every weekday and every digit.
const LocalSeconds kMoments[] = {
    at(2024, 2, 28, 23, 59, 59),  at(2024, 2, 29, 0, 0, 0),     at(2024, 2, 29, 11, 59, 59),
    at(2024, 2, 29, 12, 0, 0),    at(2024, 3, 1, 12, 59, 59),   at(2024, 3, 2, 13, 0, 0),
    at(2025, 12, 31, 23, 59, 59), at(2026, 1, 1, 0, 0, 0),      at(2023, 10, 8, 1, 23, 45),
    at(2023, 10, 9, 6, 7, 8),     at(2023, 10, 10, 10, 10, 10), at(2047, 8, 16, 20, 46, 38),
};

class DigitalClockText : public test::ClockProgram, public testing::WithParamInterface<ScreenKind> {
  protected:
    void expect_text(const HVtimeAreaData_G56& content) {
        begin(GetParam(), {0, 0, kWidth, kHeight});
        ASSERT_EQ(add(content), 0);
        const auto player = played(kWidth, kHeight);
        const auto clock = std::get<DigitalClock>(parsed().areas.at(0).clock.value().face);
        Drawn drawn(content.fontBold, content.fontItalic);
        for (const LocalSeconds moment : kMoments) {
            const auto cells = cells_of(clock, texts_of(content, moment));
            const auto baselines =
                compare(player.screen({Milliseconds{0}, moment}), cells, drawn, clock.units.at(0).color);
            EXPECT_EQ(baselines.size(), 1U) << "a common baseline";
        }
    }
};

TEST_P(DigitalClockText, ShowsEveryFormatAtEveryMoment) {
    for (int date = 0; date < 8; ++date) expect_text(content_of(date, 0, -1));
    for (int week = 1; week < 4; ++week) expect_text(content_of(-1, week, -1));
    for (int time = 0; time < 6; ++time) expect_text(content_of(-1, 0, time));
    expect_text(content_of(1, 2, 4));
}

TEST_P(DigitalClockText, IsBoldItalicAndInItsPlace) {
    for (const Ouint8 align : {Ouint8{0}, Ouint8{1}, Ouint8{2}}) {
        HVtimeAreaData_G56 content = content_of(0, 1, align == 1 ? 5 : 3); // bold colons are not cairo's
        content.fontAlign = align;
        content.fontBold = align != 1;
        content.fontItalic = align != 0;
        expect_text(content);
    }
}

constexpr ScreenKind kScreens[] = {kFive,
                                   {"Single5", false, lib::kMode0, ScreenColor::single},
                                   {"Full5", false, lib::kMode5, ScreenColor::full},
                                   kSix,
                                   {"Three6", true, lib::kMode4, ScreenColor::three},
                                   {"Full6Of16Bits", true, lib::kMode3, ScreenColor::full},
                                   {"Full6Of24Bits", true, lib::kMode5, ScreenColor::full}};

INSTANTIATE_TEST_SUITE_P(, DigitalClockText, testing::ValuesIn(kScreens),
                         [](const auto& screen) { return std::string(screen.param.name); });

class DigitalClockLayout : public test::ClockProgram {};

TEST_F(DigitalClockLayout, TakesALineForEachGroup) {
    HVtimeAreaData_G56 content = content_of(7, 3, 1);
    content.linestyle = MULTILINE;
    begin(kSix, {5, 3, 200, 80});
    ASSERT_EQ(add(content), 0);
    const auto player = played(240, 100);
    const auto clock = std::get<DigitalClock>(parsed().areas.at(0).clock.value().face);
    Drawn drawn(false, false);
    for (const LocalSeconds moment : kMoments) {
        auto cells = cells_of(clock, texts_of(content, moment));
        for (Cell& cell : cells) {
            cell.rect.x += 5;
            cell.rect.y += 3;
        }
        EXPECT_EQ(compare(player.screen({Milliseconds{0}, moment}), cells, drawn, {255, 255, 0}).size(), 3U);
    }
}

TEST_F(DigitalClockLayout, ShinesInItsColourOnEveryScreen) {
    const struct {
        ScreenKind screen;
        Ouint32 color;
        Rgb shown;
    } cases[] = {
        {{"", true, lib::kMode4, ScreenColor::single}, eGreen, {255, 0, 0}},
        {kFive, 0x808080, {255, 0, 0}},
        {kSix, 0x00FF00, {0, 255, 0}},
        {kSix, eBlue, {255, 0, 0}},
        {{"", true, lib::kMode4, ScreenColor::three}, 0x00FFFF, {0, 255, 255}},
        {{"", false, lib::kMode5, ScreenColor::full}, 0x123456, {0x12, 0x34, 0x56}},
        {{"", true, lib::kMode5, ScreenColor::full}, eMagenta, {255, 0, 255}},
        {{"", true, lib::kMode3, ScreenColor::full}, eCyan, {0, 255, 255}},
        {{"", true, lib::kMode3, ScreenColor::full}, 0x123456, {0, 8, 0x18}},
        {{"", false, lib::kMode5, ScreenColor::full}, 0xAB123456, {0x12, 0x34, 0x56}},
    };
    for (const auto& c : cases) {
        begin(c.screen, {0, 0, 64, 16});
        HVtimeAreaData_G56 content = content_of(4, 0, -1);
        content.color = c.color;
        ASSERT_EQ(add(content), 0);
        const Image screen = played(64, 16).screen({Milliseconds{0}, kMoments[0]});
        int lit = 0;
        for (int y = 0; y < 16; ++y)
            for (int x = 0; x < 64; ++x)
                if (screen.at(x, y) != Rgb{}) {
                    EXPECT_EQ(screen.at(x, y), c.shown) << std::hex << c.color << " on " << c.screen.type;
                    ++lit;
                }
        EXPECT_GT(lit, 20);
    }
}

// The simulator refuses units outside their area; here no two of them share a pixel either.
TEST_F(DigitalClockLayout, StaysInsideAreasOfAnySize) {
    std::mt19937 random(20240229);
    const auto any = [&](int least, int most) { return std::uniform_int_distribution(least, most)(random); };
    for (int i = 0; i < 200; ++i) {
        const Rect area{0, 0, any(1, 140), any(1, 40)};
        HVtimeAreaData_G56 content = content_of(any(-1, 7), any(0, 3), any(-1, 5));
        content.linestyle = static_cast<E_arrMode>(any(0, 1));
        content.fontSize = static_cast<Ouint16>(any(1, 30));
        content.fontBold = static_cast<Ouint8>(any(0, 1));
        content.fontItalic = static_cast<Ouint8>(any(0, 1));
        content.fontUnderline = static_cast<Ouint8>(any(0, 1));
        content.fontAlign = static_cast<Ouint8>(any(0, 3));
        begin(kFive, area);
        ASSERT_EQ(add(content), 0);
        const sim::StoredProgram program = parsed();
        ASSERT_EQ(program.areas.size(), 1U);
        const auto& clock = std::get<DigitalClock>(program.areas[0].clock.value().face);
        std::set<std::pair<int, int>> taken;
        for (const UnitPlace& unit : clock.units) {
            const GlyphImages& set = clock.sets[unit.set];
            for (int y = 0; y < set.height; ++y)
                for (int x = 0; x < set.width * cells_of(unit.unit); ++x)
                    EXPECT_TRUE(taken.emplace(unit.x + x, unit.y + y).second);
        }
    }
}

// What fits in a smaller size is whole.
TEST_F(DigitalClockLayout, GetsSmallerBeforeItLeavesAnythingOut) {
    for (const auto& [width, height] : {std::pair{64, 16}, {96, 16}, {128, 32}})
        for (int style = 0; style < 8; ++style) {
            begin(kSix, {0, 0, width, height});
            HVtimeAreaData_G56 content = content_of(style, 0, -1);
            content.fontSize = 24;
            ASSERT_EQ(add(content), 0);
            const sim::StoredProgram program = parsed();
            cells_of(std::get<DigitalClock>(program.areas.at(0).clock.value().face),
                     texts_of(content, kMoments[0]));
        }
}

TEST_F(DigitalClockLayout, UnderlinesWholeLines) {
    begin(kSix, {0, 0, 200, 30});
    HVtimeAreaData_G56 content = content_of(0, 2, 4);
    content.fontUnderline = 1;
    ASSERT_EQ(add(content), 0);
    const auto player = played(200, 30);
    const auto units = std::get<DigitalClock>(parsed().areas.at(0).clock.value().face).units;
    const Image screen = player.screen({Milliseconds{0}, kMoments[0]});
    int underlines = 0;
    for (int y = 0; y < 30; ++y) {
        bool whole = true;
        for (int x = units.front().x; x < 200 - units.front().x - 1; ++x) whole &= screen.at(x, y) != Rgb{};
        underlines += whole;
    }
    EXPECT_EQ(underlines, 1) << "of a font of 16 pixels";
}

} // namespace
} // namespace qm::sim
