// Programs of one time area, made by the library and played as a controller plays them.
#pragma once

#include "../program_file/fixture.h"

#include "simulator/playback/ProgramPlayer.h"
#include "simulator/playback/program_parser.h"
#include "simulator/protocol/PixelFormat.h"

#include <memory>

namespace qm::sim::test {

namespace lib = qm::test;

constexpr Ouint16 kClockArea = 3;

struct ClockScreen {
    const char* name;
    bool six;
    Ouint16 type;
    ScreenColor color;

    [[nodiscard]] PixelFormat format() const { return {packing_of(type), color}; }
};

constexpr ClockScreen kFive{"Dual5", false, lib::kMode0, ScreenColor::dual};
constexpr ClockScreen kSix{"Dual6", true, lib::kMode4, ScreenColor::dual};

class ClockProgram : public lib::Program {
  protected:
    // An empty area at (x, y) in a program of its own.
    static void begin(const ClockScreen& screen, Rect area);
    static int add(const ClockScreen& screen, const HVtimeAreaData_G56& content);
    static int add(const ClockScreen& screen, const HVAnalogClockHeader_G56& clock, E_ClockStyle style,
                   const ClockColor_G56& colors);

    [[nodiscard]] static sim::Program parsed(const ClockScreen& screen);
    // On a screen of that size.
    [[nodiscard]] static std::unique_ptr<ProgramPlayer> played(const ClockScreen& screen, int width,
                                                               int height);
};

} // namespace qm::sim::test
