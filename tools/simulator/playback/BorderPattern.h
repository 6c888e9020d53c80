// Borders of areas and of the screen.
#pragma once

#include "simulator/playback/Clock.h"
#include "simulator/playback/PixelReader.h"

#include <optional>

namespace qm::sim {

// A pattern that is repeated along the edges of an area or of the screen.
struct BorderPattern {
    std::uint8_t style = 0, speed = 0, move_step = 0;
    std::uint8_t unit_length = 0, unit_width = 0; // as the file says; 0 where it does not
    int length = 0, thickness = 0;                // of the pattern, in pixels
    ByteBuffer pixels;
};

// Draws the pattern along the inner edges of the rectangle, clockwise from the top left corner, its first row
// outermost. It moves clockwise by FrameMoveStep pixels every Speed + 1 units of 10 ms, and not at all when
// the step is 0; its style makes no difference.
void draw(Image& screen, PixelFormat format, const BorderPattern& border, const Rect& rect,
          Milliseconds played);

// When the border next looks different; nothing when it never does.
[[nodiscard]] std::optional<Milliseconds> next_change(const BorderPattern& border, Milliseconds played);

} // namespace qm::sim
