// Borders of areas and of the screen.
#pragma once

#include "simulator/playback/Clock.h"
#include "simulator/playback/Image.h"
#include "simulator/playback/ProgramFile.h"

#include <optional>

namespace qm::sim {

// Draws the pattern along the inner edges of the rectangle, clockwise from the top left corner, its first row
// outermost. It moves clockwise by FrameMoveStep pixels every Speed + 1 units of 10 ms, and not at all when
// the step is 0; its style makes no difference.
void draw(Image& screen, PixelFormat format, const Border& border, const Rect& rect, Time played);

// When the border next looks different; nothing when it never does.
[[nodiscard]] std::optional<Time> next_change(const Border& border, Time played);

} // namespace qm::sim
