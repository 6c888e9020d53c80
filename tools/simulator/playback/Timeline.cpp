#include "simulator/playback/Timeline.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr Milliseconds kStayUnit{10}, kStepUnit{1};

int at_least_once(int times) { return std::max(1, times); }

// Cut at the edges of the screen.
void draw_page(Image& screen, PixelFormat format, const Rect& rect, const Page& page) {
    const PixelReader pixels(format, rect, page.pixels);
    const int columns = std::min(rect.width, screen.width - rect.x);
    const int rows = std::min(rect.height, screen.height - rect.y);
    for (int y = 0; y < rows; ++y)
        for (int x = 0; x < columns; ++x) screen.set(rect.x + x, rect.y + y, pixels.at(x, y));
}

} // namespace

Timeline::Timeline(std::span<const Page> pages, const Rect& rect, PixelFormat format)
    : m_pages(pages), m_rect(rect), m_format(format) {
    for (std::size_t i = 0; i < pages.size();) {
        const Running direction = running_of(pages[i].display_mode);
        i = direction == Running::no ? add_page(i) : add_running(i, direction);
    }
}

// Adding gives the index of the next page.
std::size_t Timeline::add_page(std::size_t index) {
    const Page& page = m_pages[index];
    m_acts.push_back({m_end, index, std::nullopt, Milliseconds{0}});
    m_end += kStayUnit * at_least_once(page.stay_time) * at_least_once(page.repeat_time);
    return index + 1;
}

std::size_t Timeline::add_running(std::size_t index, Running direction) {
    const auto first = m_pages.begin() + static_cast<std::ptrdiff_t>(index);
    const auto last = std::find_if(first, m_pages.end(), [direction](const Page& page) {
        return running_of(page.display_mode) != direction;
    });
    const Milliseconds step = kStepUnit * (first->speed + 1);
    RunningText text(m_format, m_rect, {first, last}, direction);
    const Milliseconds whole =
        step * std::max<std::int64_t>(1, text.way()) * at_least_once(first->repeat_time);
    m_acts.push_back({m_end, index, std::move(text), step});
    m_end += whole;
    return static_cast<std::size_t>(last - m_pages.begin());
}

std::size_t Timeline::act_at(Milliseconds in_round) const {
    const auto after = std::upper_bound(m_acts.begin(), m_acts.end(), in_round,
                                        [](Milliseconds time, const Act& act) { return time < act.start; });
    return static_cast<std::size_t>(after - m_acts.begin()) - 1;
}

void Timeline::draw(Image& screen, Milliseconds played) const {
    if (m_acts.empty()) return;
    const Milliseconds in_round = played % m_end;
    const Act& act = m_acts[act_at(in_round)];
    if (!act.text) return draw_page(screen, m_format, m_rect, m_pages[act.page]);
    const std::int64_t moved = (in_round - act.start) / act.step;
    act.text->draw(screen, moved % std::max<std::int64_t>(1, act.text->way()));
}

std::optional<Milliseconds> Timeline::next_change(Milliseconds played) const {
    if (m_acts.empty()) return std::nullopt;
    const Milliseconds in_round = played % m_end, round = played - in_round;
    const std::size_t index = act_at(in_round);
    const Act& act = m_acts[index];
    if (act.text) return played - (in_round - act.start) % act.step + act.step;
    if (m_acts.size() == 1) return std::nullopt;
    return round + (index + 1 < m_acts.size() ? m_acts[index + 1].start : m_end);
}

} // namespace qm::sim
