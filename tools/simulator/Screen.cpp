#include "simulator/Screen.h"

#include <algorithm>

namespace qm::sim {
namespace {

// The number in the name of a program: P007 is 7, 1234 is 1234. -1 for none.
int number_of(const std::string& program) {
    if (program.empty()) return -1;
    int number = 0;
    for (const char c : program)
        if (c != 'P') number = 10 * number + (c - '0');
    return number;
}

} // namespace

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

std::optional<Time> PlayedArea::end() const {
    if (area.run_mode == 0 || area.timeout == 0) return std::nullopt;
    return since + std::chrono::seconds(area.timeout);
}

bool PlayedArea::shown(Time now, const std::string& program) const {
    if (now < since || (end() && now >= *end())) return false;
    return area.with_all_programs ||
           std::find(area.programs.begin(), area.programs.end(), number_of(program)) != area.programs.end();
}

std::optional<Time> next_change(std::span<const PlayedArea> areas, Time now) {
    std::optional<Time> soonest;
    for (const PlayedArea& played : areas)
        for (const std::optional<Time> edge : {std::optional(played.since), played.end()})
            if (edge && *edge > now && (!soonest || *edge < *soonest)) soonest = edge;
    return soonest;
}

void draw(Image& screen, PixelFormat format, std::span<const PlayedArea> areas, Time now,
          const std::string& program) {
    for (const PlayedArea& played : areas) {
        if (!played.shown(now, program)) continue;
        if (const Page* page = page_at(played.area, now - played.since))
            draw_page(screen, format, played.area.rect, *page);
    }
}

} // namespace qm::sim
