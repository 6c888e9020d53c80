// The clock of a time area, drawn from nothing but what was uploaded.
#pragma once

#include "simulator/playback/Moment.h"
#include "simulator/playback/PixelReader.h"

#include <variant>
#include <vector>

namespace qm::sim {

// Numbered as in the file.
enum class ClockUnit : std::uint8_t {
    year = 0,
    two_digit_year = 1,
    month = 2,
    day = 3,
    hour24 = 4,
    hour12 = 5,
    minute = 6,
    second = 7,
    am_pm = 8,
    weekday = 9,
    literal = 10,
};

// How many cells a unit takes, and how many glyphs the set has that fills them.
[[nodiscard]] int cells_of(ClockUnit unit);
[[nodiscard]] int glyphs_of(ClockUnit unit);

// A unit in the area, its first cell's top left corner at (x, y).
struct UnitPlace {
    ClockUnit unit = ClockUnit::literal;
    int x = 0, y = 0;
    std::size_t set = 0;
    Rgb color;
};

// Images of one size, of which the lit pixels are shown in the colour of the unit.
struct GlyphImages {
    int width = 0, height = 0;
    std::vector<ByteBuffer> glyphs;
};

struct DigitalClock {
    std::vector<UnitPlace> units;
    std::vector<GlyphImages> sets;
};

struct Hand {
    int width = 0, length = 0;
    Rgb color;
};

struct AnalogClock {
    int x = 0, y = 0; // where the hands turn, inside the area
    std::uint8_t style = 0;
    Hand hour, minute, second;
};

struct ClockArea {
    std::variant<DigitalClock, AnalogClock> face;
    std::optional<WeekdayTime> battle; // the moment from which a clock of its own runs
};

// A palette index as the LEDs shine: bit 0 red, bit 1 green, bit 2 blue. What a screen has no LEDs for is
// red.
[[nodiscard]] Rgb shine_of(ScreenColor screen, unsigned index);

// Draws what changes with the time over the page of the area; nothing outside the area. A battle time runs
// from its start for as long as the programs have run.
void draw(Image& screen, PixelFormat format, const ClockArea& area, const Rect& rect, const Moment& moment);

// How soon a clock may show something else: its second may turn at any time.
constexpr Milliseconds kClockStep{100};

} // namespace qm::sim
