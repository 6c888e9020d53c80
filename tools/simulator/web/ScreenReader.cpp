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
    static constexpr struct {
        Feed::Text (ScreenReader::*next)(Time now);
        bool text;
    } kKinds[] = {{&ScreenReader::next_state, true},
                  {&ScreenReader::next_picture, false},
                  {&ScreenReader::next_log, true}};
    if (std::exchange(m_sending_state, false)) { // which takes a slow reader longer than the time between two
        m_state_sent = now;
        m_state_due = now + kStateEvery;
    }
    for (std::size_t tried = 0; tried < std::size(kKinds); ++tried) {
        const auto& kind = kKinds[m_turn];
        m_turn = (m_turn + 1) % std::size(kKinds);
        if (auto message = (this->*kind.next)(now)) return Message{std::move(message), kind.text};
    }
    return std::nullopt;
}

void ScreenReader::changed() {
    m_state_due = m_state_sent + kStateEvery;
    m_wake();
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
    m_sending_state = true;
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
