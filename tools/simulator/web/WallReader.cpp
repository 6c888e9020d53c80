#include "simulator/web/WallReader.h"

namespace qm::sim {
namespace {

constexpr std::chrono::milliseconds kEvery{100};

} // namespace

WallReader::WallReader(const std::vector<std::unique_ptr<Feed>>& feeds, std::function<void()> wake)
    : m_wake(std::move(wake)) {
    for (const auto& feed : feeds) {
        m_tiles.push_back(std::make_unique<Tile>(*this, *feed));
        m_waiting.emplace(Time{}, m_tiles.back().get());
    }
}

std::optional<Reader::Message> WallReader::next(Time now) {
    while (!m_waiting.empty() && m_waiting.begin()->first <= now) {
        Tile* const tile = m_waiting.begin()->second;
        m_waiting.erase(m_waiting.begin());
        if (auto message = tile->take(now)) return Message{std::move(message), false};
    }
    return std::nullopt;
}

Reader::Time WallReader::again() const { return m_waiting.empty() ? Time::max() : m_waiting.begin()->first; }

void WallReader::Tile::changed() {
    m_wall.m_waiting.emplace(m_due, this);
    m_wall.m_wake();
}

Feed::Text WallReader::Tile::take(Time now) {
    if (m_feed.picture() == m_picture) return nullptr;
    Feed::Text message = m_feed.message_after(m_picture, true);
    m_picture = m_feed.picture();
    m_due = now + kEvery;
    return message;
}

} // namespace qm::sim
