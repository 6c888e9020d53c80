#include "simulator/Screen.h"

#include <algorithm>

namespace qm::sim {

void draw_page(Image& screen, PixelFormat format, const Rect& rect, const Page& page) {
    const PixelReader pixels(format, rect, page.pixels);
    const int columns = std::min(rect.width, screen.width - rect.x);
    const int rows = std::min(rect.height, screen.height - rect.y);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x) screen.set(rect.x + x, rect.y + y, pixels.at(x, y));
}

// Pages do not turn: the first one stays.
const Page* page_at(const DynamicArea& area, Time) {
    return area.pages.empty() ? nullptr : &area.pages.front();
}

void draw(Image& screen, PixelFormat format, std::span<const PlayedArea> areas, Time now) {
    for (const PlayedArea& played : areas)
        if (const Page* page = page_at(played.area, now - played.since))
            draw_page(screen, format, played.area.rect, *page);
}

} // namespace qm::sim
