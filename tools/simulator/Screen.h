// What the screen shows: a function of the controller's state and of the time.
#pragma once

#include "simulator/DynamicArea.h"
#include "simulator/Image.h"
#include "simulator/PixelData.h"

#include <chrono>
#include <span>

namespace qm::sim {

// Time since the controller was switched on.
using Time = std::chrono::milliseconds;

// A dynamic area and the moment at which its playing began.
struct PlayedArea {
    DynamicArea area;
    Time since{0};
};

// The page that an area shows once it has played for this long; null when it has none.
[[nodiscard]] const Page* page_at(const DynamicArea& area, Time played);

// Draws one page on its rectangle.
void draw_page(Image& screen, PixelFormat format, const Rect& rect, const Page& page);

// Draws the areas in their order, cut at the edges of the screen.
void draw(Image& screen, PixelFormat format, std::span<const PlayedArea> areas, Time now);

} // namespace qm::sim
