#include "simulator/playback/ClockArea.h"

namespace qm::sim {

int cells_of(ClockUnit unit) {
    if (unit == ClockUnit::year) return 4;
    return glyphs_of(unit) == 10 ? 2 : 1;
}

int glyphs_of(ClockUnit unit) {
    switch (unit) {
    case ClockUnit::am_pm:
        return 2;
    case ClockUnit::weekday:
        return 7;
    case ClockUnit::literal:
        return 1;
    default:
        return 10;
    }
}

Rgb shine_of(ScreenColor screen, unsigned index) {
    const auto full = [](bool lit) { return static_cast<std::uint8_t>(lit ? 255 : 0); };
    const bool red = index & 1U, green = index & 2U, blue = index & 4U;
    if (screen == ScreenColor::single) return {full(red || green || blue), 0, 0};
    if (screen == ScreenColor::dual) return {full(red || (blue && !green)), full(green), 0};
    return {full(red), full(green), full(blue)};
}

} // namespace qm::sim
