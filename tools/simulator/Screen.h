// What the screen shows: a function of the controller's state and of the time.
#pragma once

#include "simulator/DynamicArea.h"
#include "simulator/Image.h"
#include "simulator/PixelData.h"

#include <chrono>
#include <optional>
#include <span>
#include <string>

namespace qm::sim {

// Time since the controller was switched on.
using Time = std::chrono::milliseconds;

// A dynamic area and the moment at which its playing begins.
struct PlayedArea {
    DynamicArea area;
    Time since{0};

    // When it is no longer shown unless it is sent anew: Timeout seconds after it began. Run mode 0 and a
    // time-out of 0 know no end.
    [[nodiscard]] std::optional<Time> end() const;
    // Whether it is shown while the program of that name is played; an empty name is none.
    [[nodiscard]] bool shown(Time now, const std::string& program) const;
};

// When an area comes or goes by itself.
[[nodiscard]] std::optional<Time> next_change(std::span<const PlayedArea> areas, Time now);

// The page that an area shows once it has played for this long; null when it has none.
[[nodiscard]] const Page* page_at(const DynamicArea& area, Time played);

// Draws one page on its rectangle.
void draw_page(Image& screen, PixelFormat format, const Rect& rect, const Page& page);

// Draws the areas that are shown, in their order, cut at the edges of the screen.
void draw(Image& screen, PixelFormat format, std::span<const PlayedArea> areas, Time now,
          const std::string& program);

} // namespace qm::sim
