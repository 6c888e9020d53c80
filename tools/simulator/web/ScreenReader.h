// One controller's picture, state and log.
#pragma once

#include "simulator/web/Reader.h"

namespace qm::sim {

class ScreenReader : public Reader, private Listener {
  public:
    // The feed outlives it.
    ScreenReader(Feed& feed, std::function<void()> wake);
    ScreenReader(const ScreenReader&) = delete;
    ScreenReader& operator=(const ScreenReader&) = delete;
    ~ScreenReader() override { m_feed.remove(*this); }

    std::optional<Message> next(Time now) override;
    [[nodiscard]] Time again() const override;

  private:
    void changed() override;
    Feed::Text next_state(Time now);
    Feed::Text next_log(Time now);
    Feed::Text next_picture(Time now);

    Feed& m_feed;
    std::function<void()> m_wake;
    // What was sent last, and when the next one may be.
    std::shared_ptr<const Image> m_picture;
    Feed::Text m_state;
    std::uint64_t m_log = 0;
    Time m_picture_due{}, m_state_due{}, m_log_due{};
    Time m_state_sent{};
    bool m_sending_state = false;
    std::size_t m_turn = 0; // whose it is to be looked at first: a slow reader gets a bit of each
};

} // namespace qm::sim
