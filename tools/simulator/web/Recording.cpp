#include "simulator/web/Recording.h"

#include <stdexcept>

namespace qm::sim {
namespace {

constexpr std::size_t kMostBytes = std::size_t{64} << 20U;

} // namespace

Recording::Recording(Feed& feed, std::function<void()> enough)
    : m_feed(feed), m_on_enough(std::move(enough)), m_gif([this](std::span<const std::uint8_t> bytes) {
          m_bytes.append(bytes.begin(), bytes.end());
          return true;
      }) {
    m_feed.add(*this);
    changed();
}

void Recording::changed() {
    if (m_full || m_feed.picture() == m_latest) return;
    m_latest = m_feed.picture();
    try {
        m_gif.add(m_latest, std::chrono::steady_clock::now());
        m_full = m_bytes.size() > kMostBytes;
    } catch (const std::runtime_error&) { // which it says again at the end
        m_full = true;
    }
    if (m_full) m_on_enough();
}

std::optional<std::string> Recording::finish() try {
    m_gif.finish(std::chrono::steady_clock::now());
    return std::move(m_bytes);
} catch (const std::runtime_error&) {
    return std::nullopt;
}

} // namespace qm::sim
