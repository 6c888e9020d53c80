// A clock on the screen, drawn from nothing but what was uploaded.
#pragma once

#include "simulator/playback/ClockArea.h"
#include "simulator/playback/Moment.h"

namespace qm::sim {

// Draws what changes with the time over the page of the area; nothing outside the area. A battle time runs
// from its start for as long as the programs have run.
void draw(Image& screen, PixelFormat format, const ClockArea& area, const Rect& rect, const Moment& moment);

// How soon a clock may show something else: its second may turn at any time.
constexpr Time kClockStep{100};

} // namespace qm::sim
