#include "simulator/playback/BorderPattern.h"

#include <algorithm>

namespace qm::sim {
namespace {

Milliseconds step_of(const BorderPattern& border) { return Milliseconds(10) * (border.speed + 1); }

// Where a pixel of the border lies on the pattern: along the edge from the top left corner, and below it.
struct Place {
    std::int64_t along = 0;
    int depth = 0;
};

// Top and bottom own the corners.
Place place_of(int x, int y, const Rect& rect, int thickness) {
    const std::int64_t w = rect.width, h = rect.height;
    const int from_right = rect.width - 1 - x, from_bottom = rect.height - 1 - y;
    if (y < thickness) return {x, y};
    if (from_bottom < thickness) return {w + h + from_right, from_bottom};
    if (from_right < thickness) return {w + y, from_right};
    return {2 * w + h + from_bottom, x};
}

} // namespace

void draw(Image& screen, PixelFormat format, const BorderPattern& border, const Rect& rect,
          Milliseconds played) {
    if (border.length < 1) return;
    const PixelReader pattern(format, {0, 0, border.length, border.thickness}, border.pixels);
    const std::int64_t moved = played / step_of(border) % border.length * border.move_step % border.length;
    const int columns = std::min(rect.width, screen.width - rect.x);
    const int rows = std::min(rect.height, screen.height - rect.y);
    for (int y = 0; y < rows; ++y) {
        const bool beside = y >= border.thickness && rect.height - 1 - y >= border.thickness;
        for (int x = 0; x < columns; ++x) {
            if (beside && x == border.thickness) x = std::max(x, rect.width - border.thickness);
            if (x >= columns) break;
            const Place place = place_of(x, y, rect, border.thickness);
            const std::int64_t along = (place.along - moved + border.length) % border.length;
            screen.set(rect.x + x, rect.y + y, pattern.at(static_cast<int>(along), place.depth));
        }
    }
}

std::optional<Milliseconds> next_change(const BorderPattern& border, Milliseconds played) {
    if (border.length < 1 || border.move_step % border.length == 0) return std::nullopt;
    return played - played % step_of(border) + step_of(border);
}

} // namespace qm::sim
