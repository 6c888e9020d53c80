#include "simulator/web/Feed.h"

#include "simulator/web/live_json.h"
#include "simulator/web/picture_message.h"

#include <boost/asio/post.hpp>
#include <nlohmann/json.hpp>

namespace qm::sim {

void Feed::add(Listener& listener) {
    m_listeners.insert(&listener);
    if (m_listeners.size() > 1) return;
    m_exchange.watch([this] { wake(); });
    m_picture = m_exchange.shown();
    m_messages.clear();
    m_state_old = true;
}

void Feed::remove(Listener& listener) {
    m_listeners.erase(&listener);
    if (m_listeners.empty()) m_exchange.watch({});
}

void Feed::end_recordings() {
    for (Listener* const listener : m_listeners) listener->enough();
}

// In threads of others.
void Feed::wake() try {
    if (m_attention.exchange(Attention::wanted) == Attention::ready)
        asio::post(m_context, [this] { look(); });
} catch (const std::bad_alloc&) { // there will be other news
    m_attention = Attention::ready;
}

void Feed::look() {
    rest();
    auto picture = m_exchange.shown();
    if (picture != m_picture) m_messages.clear();
    m_picture = std::move(picture);
    m_state_old = true;
    const std::vector<Listener*> listeners(m_listeners.begin(), m_listeners.end());
    for (Listener* const listener : listeners) listener->changed();
}

// The timer lives in the context, which goes before the feed does.
void Feed::rest() try {
    m_attention = Attention::resting;
    constexpr std::chrono::milliseconds kRest{15}; // pictures come sixty times a second
    const auto timer = std::make_shared<asio::steady_timer>(m_context, kRest);
    timer->async_wait([this, timer](NetworkError error) {
        if (error) return;
        Attention resting = Attention::resting;
        if (!m_attention.compare_exchange_strong(resting, Attention::ready)) look();
    });
} catch (const std::bad_alloc&) { // then without a rest
    m_attention = Attention::ready;
}

Feed::Text Feed::message_after(const std::shared_ptr<const Image>& before, bool numbered) {
    for (const Message& message : m_messages)
        if (message.before == before && message.numbered == numbered) return message.text;
    auto bytes = picture_message(before.get(), *m_picture, numbered ? std::optional(m_number) : std::nullopt);
    Text text = bytes ? std::make_shared<const std::string>(std::move(*bytes)) : nullptr;
    m_messages.push_back({before, numbered, text});
    return text;
}

// Its clock goes on even when nothing happens.
Feed::Text Feed::state(Time now) {
    constexpr std::chrono::milliseconds kSoonest{250}, kLatest{1000};
    const auto age = now - m_state_made;
    if (m_state && age < (m_state_old ? kSoonest : kLatest)) return m_state;
    const nlohmann::json state{{"state", live_state(m_exchange)}};
    std::string text = text_of(state);
    if (!m_state || text != *m_state) m_state = std::make_shared<const std::string>(std::move(text));
    m_state_made = now;
    m_state_old = false;
    return m_state;
}

} // namespace qm::sim
