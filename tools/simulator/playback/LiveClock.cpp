#include "simulator/playback/LiveClock.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace qm::sim {
namespace {

using namespace std::chrono;

// A moment as people read it.
struct Shown {
    Shown(LocalSeconds time, unsigned day_of_week)
        : date(floor<days>(time)), clock(time - floor<days>(time)), weekday(day_of_week) {}

    year_month_day date;
    hh_mm_ss<seconds> clock;
    unsigned weekday; // from 0 for Sunday

    [[nodiscard]] int hour() const { return static_cast<int>(clock.hours().count()); }
    [[nodiscard]] int minute() const { return static_cast<int>(clock.minutes().count()); }
    [[nodiscard]] int second() const { return static_cast<int>(clock.seconds().count()); }
};

Shown shown(const ClockArea& area, const Moment& moment) {
    if (!area.battle) return {moment.clock, weekday(floor<days>(moment.clock)).c_encoding()};
    const auto& [start, first] = *area.battle;
    const LocalSeconds now = start + floor<seconds>(moment.played);
    const auto passed = floor<days>(now) - floor<days>(start);
    return {now, static_cast<unsigned>((first + passed.count()) % 7)};
}

int value_of(ClockUnit unit, const Shown& now) {
    switch (unit) {
    case ClockUnit::year:
        return static_cast<int>(now.date.year());
    case ClockUnit::two_digit_year:
        return static_cast<int>(now.date.year()) % 100;
    case ClockUnit::month:
        return static_cast<int>(static_cast<unsigned>(now.date.month()));
    case ClockUnit::day:
        return static_cast<int>(static_cast<unsigned>(now.date.day()));
    case ClockUnit::hour24:
        return now.hour();
    case ClockUnit::hour12:
        return now.hour() % 12 == 0 ? 12 : now.hour() % 12;
    case ClockUnit::minute:
        return now.minute();
    case ClockUnit::second:
        return now.second();
    case ClockUnit::am_pm:
        return now.hour() >= 12;
    case ClockUnit::weekday:
        return static_cast<int>(now.weekday);
    case ClockUnit::literal:
        break;
    }
    return 0;
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

class DigitalFace {
  public:
    DigitalFace(Part& part, PixelFormat format, const DigitalClock& clock)
        : m_part(part), m_format(format), m_clock(clock) {}

    void draw(const UnitPlace& unit, int value) {
        const int cells = cells_of(unit.unit), width = m_clock.sets[unit.set].width;
        for (int cell = cells - 1; cell >= 0; --cell, value /= 10)
            draw_glyph(unit, cells == 1 ? value : value % 10, unit.x + cell * width);
    }

  private:
    void draw_glyph(const UnitPlace& unit, int glyph, int left) {
        const GlyphImages& set = m_clock.sets[unit.set];
        const PixelReader pixels(m_format, {0, 0, set.width, set.height},
                                 set.glyphs[static_cast<std::size_t>(glyph)]);
        const int columns = std::min(set.width, m_part.width() - left);
        const int rows = std::min(set.height, m_part.height() - unit.y);
        for (int y = 0; y < rows; ++y)
            for (int x = 0; x < columns; ++x)
                if (pixels.at(x, y) != Rgb{}) m_part.set(left + x, unit.y + y, unit.color);
    }

    Part& m_part;
    PixelFormat m_format;
    const DigitalClock& m_clock;
};

// A bar from the pivot on; at right angles it is exactly as wide and as long as it should be.
void draw_hand(Part& part, const AnalogClock& clock, const Hand& hand, double turn) {
    if (hand.width == 0 || hand.length == 0) return;
    constexpr double kExact = 1e-9;
    const double right = std::sin(turn * 2 * std::numbers::pi), up = std::cos(turn * 2 * std::numbers::pi);
    const int reach = hand.length + hand.width;
    for (int dy = -reach; dy <= reach; ++dy)
        for (int dx = -reach; dx <= reach; ++dx) {
            const double along = dx * right - dy * up, across = dx * up + dy * right;
            if (along > -0.5 + kExact && along < hand.length - 0.5 + kExact &&
                across >= -hand.width / 2.0 - kExact && across < hand.width / 2.0 - kExact)
                part.set(clock.x + dx, clock.y + dy, hand.color);
        }
}

void draw_hands(Part& part, const AnalogClock& clock, const Shown& now) {
    const double seconds = now.second() / 60.0, minutes = (now.minute() + seconds) / 60;
    draw_hand(part, clock, clock.hour, (now.hour() % 12 + minutes) / 12);
    draw_hand(part, clock, clock.minute, minutes);
    draw_hand(part, clock, clock.second, seconds);
}

} // namespace

void draw(Image& screen, PixelFormat format, const ClockArea& area, const Rect& rect, const Moment& moment) {
    Part part(screen, rect);
    const Shown now = shown(area, moment);
    if (const auto* analog = std::get_if<AnalogClock>(&area.face)) return draw_hands(part, *analog, now);
    const auto& digital = std::get<DigitalClock>(area.face);
    DigitalFace face(part, format, digital);
    for (const UnitPlace& unit : digital.units) face.draw(unit, value_of(unit.unit, now));
}

} // namespace qm::sim
