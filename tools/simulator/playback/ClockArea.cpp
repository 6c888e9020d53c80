#include "simulator/playback/ClockArea.h"

#include "clock/hands.h"

#include <algorithm>

namespace qm::sim {
namespace {

using namespace std::chrono;

Civil shown(const ClockArea& area, const Moment& moment) {
    if (!area.battle) return civil(moment.clock);
    const auto& [start, first] = *area.battle;
    const LocalSeconds time = start + floor<seconds>(moment.played);
    Civil now = civil(time);
    now.weekday = static_cast<int>((first + (floor<days>(time) - floor<days>(start)).count()) % 7);
    return now;
}

int value_of(ClockUnit unit, const Civil& now) {
    const int hour12 = (now.hour + 11) % 12 + 1, literal = 0;
    const int values[] = {now.year,   now.year % 100, now.month,      now.day,     now.hour, hour12,
                          now.minute, now.second,     now.hour >= 12, now.weekday, literal};
    return values[static_cast<std::size_t>(unit)];
}

// A part of the screen that nothing is drawn outside of.
class Part {
  public:
    Part(Image& screen, const Rect& rect)
        : m_screen(screen), m_rect(rect), m_width(std::min(rect.width, screen.width - rect.x)),
          m_height(std::min(rect.height, screen.height - rect.y)) {}

    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }
    void set(int x, int y, Rgb color) {
        if (x >= 0 && y >= 0 && x < m_width && y < m_height) m_screen.set(m_rect.x + x, m_rect.y + y, color);
    }

  private:
    Image& m_screen;
    const Rect& m_rect;
    int m_width, m_height; // of what is on the screen
};

// The pixels that are lit in the glyph, in the unit's colour.
void draw_glyph(Part& part, const PixelReader& glyph, const GlyphImages& set, const UnitPlace& unit,
                int left) {
    const int columns = std::min(set.width, part.width() - left);
    const int rows = std::min(set.height, part.height() - unit.y);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x)
            if (glyph.at(x, y) != Rgb{}) part.set(left + x, unit.y + y, unit.color);
}

// Digits from the right, or one glyph for the whole value.
void draw_unit(Part& part, PixelFormat format, const GlyphImages& set, const UnitPlace& unit, int value) {
    const int cells = cells_of(unit.unit);
    for (int cell = cells - 1; cell >= 0; --cell, value /= 10) {
        const auto glyph = static_cast<std::size_t>(cells == 1 ? value : value % 10);
        const PixelReader pixels(format, {0, 0, set.width, set.height}, set.glyphs[glyph]);
        draw_glyph(part, pixels, set, unit, unit.x + cell * set.width);
    }
}

void draw_hands(Part& part, const AnalogClock& clock, const Civil& now) {
    const auto draw = [&](const Hand& hand, double turn) {
        qm::clock::draw_hand(hand.width, hand.length, turn,
                             [&](int dx, int dy) { part.set(clock.x + dx, clock.y + dy, hand.color); });
    };
    const auto turns = qm::clock::turns_at(now.hour, now.minute, now.second);
    draw(clock.hour, turns.hour);
    draw(clock.minute, turns.minute);
    draw(clock.second, turns.second);
}

} // namespace

int cells_of(ClockUnit unit) {
    if (unit == ClockUnit::year) return 4;
    return glyphs_of(unit) == 10 ? 2 : 1;
}

int glyphs_of(ClockUnit unit) {
    if (unit == ClockUnit::am_pm) return 2;
    if (unit == ClockUnit::weekday) return 7;
    return unit == ClockUnit::literal ? 1 : 10;
}

Rgb shine_of(ScreenColor screen, unsigned index) {
    const bool red = index & 1U, green = index & 2U, blue = index & 4U;
    if (screen == ScreenColor::single) return shine(red || green || blue, false, false);
    if (screen == ScreenColor::dual) return shine(red || (blue && !green), green, false);
    return shine(red, green, blue);
}

void draw(Image& screen, PixelFormat format, const ClockArea& area, const Rect& rect, const Moment& moment) {
    Part part(screen, rect);
    const Civil now = shown(area, moment);
    if (const auto* analog = std::get_if<AnalogClock>(&area.face)) return draw_hands(part, *analog, now);
    const auto& digital = std::get<DigitalClock>(area.face);
    for (const UnitPlace& unit : digital.units)
        draw_unit(part, format, digital.sets[unit.set], unit, value_of(unit.unit, now));
}

} // namespace qm::sim
