#include "simulator/web/ScreenReader.h"

#include "simulator/web/live_json.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace qm::sim {
namespace {

constexpr std::chrono::microseconds kPictureEvery{1000000 / 60};
constexpr std::chrono::milliseconds kStateEvery{250}, kLogEvery{50};
constexpr std::size_t kFirstEntries = 200;

} // namespace

ScreenReader::ScreenReader(Feed& feed, std::function<void()> wake) : m_feed(feed), m_wake(std::move(wake)) {
    m_feed.add(*this);
}

std::optional<Reader::Message> ScreenReader::next(Time now) {
    if (auto state = next_state(now)) return Message{std::move(state), true};
    if (auto picture = next_picture(now)) return Message{std::move(picture), false};
    if (auto log = next_log(now)) return Message{std::move(log), true};
    return std::nullopt;
}

Reader::Time ScreenReader::again() const {
    Time soonest = m_state_due;
    if (m_feed.picture() != m_picture) soonest = std::min(soonest, m_picture_due);
    if (m_feed.log().latest() != m_log) soonest = std::min(soonest, m_log_due);
    return soonest;
}

Feed::Text ScreenReader::next_state(Time now) {
    if (now < m_state_due) return nullptr;
    m_state_due = now + kStateEvery;
    Feed::Text state = m_feed.state(now);
    if (state == m_state) return nullptr;
    return m_state = std::move(state);
}

Feed::Text ScreenReader::next_picture(Time now) {
    if (now < m_picture_due || m_feed.picture() == m_picture) return nullptr;
    Feed::Text message = m_feed.message_after(m_picture, false);
    m_picture = m_feed.picture();
    m_picture_due = now + kPictureEvery;
    return message;
}

Feed::Text ScreenReader::next_log(Time now) {
    if (now < m_log_due) return nullptr;
    const auto entries = m_feed.log().after(m_log, m_log == 0 ? kFirstEntries : RequestLog::kEntries);
    if (entries.empty()) return nullptr;
    m_log = entries.back().number;
    m_log_due = now + kLogEvery;
    return std::make_shared<const std::string>(text_of(nlohmann::json{{"log", json_of(entries)}}));
}

} // namespace qm::sim
