// Records of clocks for the library.
#pragma once

#include "ProgramDescription.h"

namespace qm::ctl {

// Points to the area's font name.
[[nodiscard]] HVtimeAreaData_G56 time_content(const Area& area);
// What is not given follows from the room around the pivot.
[[nodiscard]] HVAnalogClockHeader_G56 clock_hands(const AnalogClock& clock, const Rect& rect);

} // namespace qm::ctl
