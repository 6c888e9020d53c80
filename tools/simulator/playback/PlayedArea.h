// The dynamic areas on the screen: a function of the areas, of the time and of the program that is played.
#pragma once

#include "simulator/playback/Clock.h"
#include "simulator/playback/Image.h"
#include "simulator/playback/PixelReader.h"
#include "simulator/playback/ReceivedArea.h"
#include "simulator/playback/Timeline.h"

#include <optional>
#include <span>
#include <string>

namespace qm::sim {

// A dynamic area and the moment at which its playing begins.
struct PlayedArea {
    PlayedArea(ReceivedArea what, PixelFormat format, Milliseconds begin);
    PlayedArea(PlayedArea&&) = default;
    PlayedArea& operator=(PlayedArea&&) = default;

    ReceivedArea area;
    Milliseconds since;
    Timeline timeline; // of the pages of the area, which stay where they are when it is moved

    // When it is no longer shown unless it is sent anew: Timeout seconds after it began. Run mode 0 and a
    // time-out of 0 know no end.
    [[nodiscard]] std::optional<Milliseconds> end() const;
    // Whether it is shown while the program of that name is played; an empty name is none.
    [[nodiscard]] bool shown(Milliseconds now, const std::string& program) const;
};

// When an area next comes, goes or shows something else by itself; nothing when none ever does.
[[nodiscard]] std::optional<Milliseconds> next_change(std::span<const PlayedArea> areas, Milliseconds now,
                                                      const std::string& program);

// Draws the areas that are shown, in their order, cut at the edges of the screen.
void draw(Image& screen, std::span<const PlayedArea> areas, Milliseconds now, const std::string& program);

} // namespace qm::sim
