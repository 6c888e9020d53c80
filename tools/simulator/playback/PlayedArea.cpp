#include "simulator/playback/PlayedArea.h"

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

PlayedArea::PlayedArea(ReceivedArea what, PixelFormat format, Milliseconds begin)
    : area(std::move(what)), since(begin), timeline(area.pages, area.rect, format) {}

std::optional<Milliseconds> PlayedArea::end() const {
    if (area.run_mode == 0 || area.timeout == 0) return std::nullopt;
    return since + std::chrono::seconds(area.timeout);
}

bool PlayedArea::shown(Milliseconds now, const std::string& program) const {
    if (now < since || (end() && now >= *end())) return false;
    return area.with_all_programs ||
           std::find(area.programs.begin(), area.programs.end(), number_of(program)) != area.programs.end();
}

std::optional<Milliseconds> next_change(std::span<const PlayedArea> areas, Milliseconds now,
                                        const std::string& program) {
    std::optional<Milliseconds> soonest;
    const auto note = [&](std::optional<Milliseconds> change) {
        if (change && *change > now) soonest = sooner(soonest, change);
    };
    for (const PlayedArea& played : areas) {
        note(played.since);
        note(played.end());
        if (!played.shown(now, program)) continue;
        if (const auto change = played.timeline.next_change(now - played.since)) note(played.since + *change);
    }
    return soonest;
}

void draw(Image& screen, std::span<const PlayedArea> areas, Milliseconds now, const std::string& program) {
    for (const PlayedArea& played : areas)
        if (played.shown(now, program)) played.timeline.draw(screen, now - played.since);
}

} // namespace qm::sim
