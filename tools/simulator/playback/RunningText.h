// Pages that run through an area as one strip.
#pragma once

#include "simulator/playback/Page.h"
#include "simulator/playback/PixelReader.h"

#include <cstdint>
#include <span>
#include <vector>

namespace qm::sim {

enum class Running { no, left, right };

[[nodiscard]] Running running_of(std::uint8_t display_mode);

// The first ValidLen columns of every page, side by side. A strip that runs to the right has its last page
// on the left: hosts send such a text from its end on, and its beginning comes in last. The strip comes in
// at one edge of the area, which is empty before, and leaves it empty at the other.
class RunningText {
  public:
    // The pages outlive the strip.
    RunningText(PixelFormat format, const Rect& rect, std::span<const Page> pages, Running direction);

    // How many pixels it moves until it has left.
    [[nodiscard]] std::int64_t way() const { return m_starts.back() + m_rect.width; }
    // Draws the area with the strip moved that far.
    void draw(Image& screen, std::int64_t moved) const;

  private:
    void draw_column(Image& screen, int x, std::int64_t strip_x) const;
    [[nodiscard]] const Page& page(std::size_t place) const;

    PixelFormat m_format;
    Rect m_rect;
    std::span<const Page> m_pages;
    Running m_direction;
    std::vector<std::int64_t> m_starts; // of every page on the strip from the left, then its length
};

} // namespace qm::sim
