#include "simulator/playback/ClockArea.h"

namespace qm::sim {

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

} // namespace qm::sim
