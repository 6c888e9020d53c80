// Programs of one time area, made by the library and played as a controller plays them.
#pragma once

#include "../program_file/fixture.h"

namespace qm::sim::test {

namespace lib = qm::test;
using lib::kFive, lib::kSix, lib::ScreenKind;

constexpr Ouint16 kClockArea = 3;

class ClockProgram : public lib::Program {
  protected:
    // An empty area in a program of its own.
    static void begin(const ScreenKind& screen, Rect area) {
        Program::begin(screen);
        add_area(kClockArea, eTimeClockArea, area);
    }
    static int add(const HVtimeAreaData_G56& content) {
        return is_six() ? program_timeAreaAddContent_G6(kClockArea, &content)
                        : program_timeAreaAddContent(kClockArea, &content);
    }
    static int add(const HVAnalogClockHeader_G56& clock, E_ClockStyle style, const ClockColor_G56& colors) {
        return is_six() ? program_timeAreaAddAnalogClock_G6(kClockArea, &clock, style, &colors)
                        : program_timeAreaAddAnalogClock(kClockArea, &clock, style, &colors);
    }
};

} // namespace qm::sim::test
