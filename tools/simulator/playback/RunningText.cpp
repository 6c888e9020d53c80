#include "simulator/playback/RunningText.h"

#include <algorithm>

namespace qm::sim {

Running running_of(std::uint8_t display_mode) {
    if (display_mode == 4) return Running::left;
    return display_mode == 38 || display_mode == 40 ? Running::right : Running::no;
}

RunningText::RunningText(PixelFormat format, const Rect& rect, std::span<const Page> pages, Running direction)
    : m_format(format), m_rect(rect), m_pages(pages), m_direction(direction), m_starts{0} {
    for (std::size_t i = 0; i < pages.size(); ++i)
        m_starts.push_back(m_starts.back() + std::clamp<int>(page(i).valid_len, 0, std::max(0, rect.width)));
}

const Page& RunningText::page(std::size_t place) const {
    return m_pages[m_direction == Running::right ? m_pages.size() - 1 - place : place];
}

void RunningText::draw(Image& screen, std::int64_t moved) const {
    const std::int64_t length = m_starts.back();
    const std::int64_t first = m_direction == Running::right ? length - moved : moved - m_rect.width;
    const int columns = std::min(m_rect.width, screen.width - m_rect.x);
    for (int x = 0; x < columns; ++x) draw_column(screen, x, first + x);
}

void RunningText::draw_column(Image& screen, int x, std::int64_t strip_x) const {
    const int rows = std::min(m_rect.height, screen.height - m_rect.y);
    if (strip_x < 0 || strip_x >= m_starts.back()) {
        for (int y = 0; y < rows; ++y) screen.set(m_rect.x + x, m_rect.y + y, {});
        return;
    }
    const auto after = std::upper_bound(m_starts.begin(), m_starts.end(), strip_x);
    const auto place = static_cast<std::size_t>(after - m_starts.begin()) - 1;
    const PixelReader pixels(m_format, m_rect, page(place).pixels);
    const int column = static_cast<int>(strip_x - m_starts[place]);
    for (int y = 0; y < rows; ++y) screen.set(m_rect.x + x, m_rect.y + y, pixels.at(column, y));
}

} // namespace qm::sim
