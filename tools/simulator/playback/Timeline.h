// What an area shows, page after page, over and over.
#pragma once

#include "simulator/playback/Clock.h"
#include "simulator/playback/RunningText.h"

#include <optional>
#include <span>
#include <vector>

namespace qm::sim {

// A page appears at once, whatever its effect, and stays StayTime times 10 ms (at least 10 ms), RepeatTime
// times over (at least once). Running pages that follow one another are one strip, which moves a pixel every
// Speed + 1 milliseconds and runs through as often as the RepeatTime of its first page says.
class Timeline {
  public:
    // The pages outlive it; the rectangle is theirs.
    Timeline(std::span<const Page> pages, const Rect& rect, PixelFormat format);

    // How long all pages take together.
    [[nodiscard]] Milliseconds once() const { return m_end; }
    void draw(Image& screen, Milliseconds played) const;
    // When the area next shows something else; nothing when it never does.
    [[nodiscard]] std::optional<Milliseconds> next_change(Milliseconds played) const;

  private:
    struct Act {
        Milliseconds start{0};
        std::size_t page = 0;
        std::optional<RunningText> text;
        Milliseconds step{0}; // of running text
    };

    std::size_t add_page(std::size_t page);
    std::size_t add_running(std::size_t page, Running direction);
    [[nodiscard]] std::size_t act_at(Milliseconds in_round) const;

    std::span<const Page> m_pages;
    Rect m_rect;
    PixelFormat m_format;
    std::vector<Act> m_acts;
    Milliseconds m_end{0};
};

} // namespace qm::sim
