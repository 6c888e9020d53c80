// What all readers of one controller share: its latest picture and state. Lives in the server's thread.
#pragma once

#include "simulator/device/Exchange.h"
#include "simulator/wire/network.h"

#include <set>

namespace qm::sim {

class Listener {
  public:
    virtual ~Listener() = default;
    // Picture, state or log have changed.
    virtual void changed() = 0;
    // Whoever gathers what comes is to hand it over.
    virtual void enough() {}
};

class Feed {
  public:
    using Time = std::chrono::steady_clock::time_point;
    using Text = std::shared_ptr<const std::string>;

    // Both outlive the feed.
    Feed(asio::io_context& context, Exchange& exchange, std::size_t number)
        : m_context(context), m_exchange(exchange), m_number(number) {}
    Feed(const Feed&) = delete;
    Feed& operator=(const Feed&) = delete;
    ~Feed() { close(); }

    // While there are listeners, the picture is up to date.
    void add(Listener& listener);
    void remove(Listener& listener);
    // No listener hears anything any more, and the context is left alone.
    void close() { m_exchange.watch({}); }

    void end_recordings();

    [[nodiscard]] Exchange& exchange() { return m_exchange; }
    [[nodiscard]] const std::shared_ptr<const Image>& picture() const { return m_picture; }
    // The latest picture for one who was last sent that one, which may be null; null when it is the same.
    // Numbered ones tell the controller.
    [[nodiscard]] Text message_after(const std::shared_ptr<const Image>& before, bool numbered);
    // {"state": ...}; made anew four times a second at most, and the same text when nothing has changed.
    [[nodiscard]] Text state(Time now);
    [[nodiscard]] const RequestLog& log() const { return m_exchange.log(); }

  private:
    struct Message {
        std::shared_ptr<const Image> before;
        bool numbered;
        Text text;
    };

    // News that come while it rests are looked at together, so that requests wake nobody one by one.
    enum class Attention { ready, resting, wanted };

    void wake();
    void look();
    void rest();

    asio::io_context& m_context;
    Exchange& m_exchange;
    const std::size_t m_number;
    std::set<Listener*> m_listeners;
    std::atomic<Attention> m_attention{Attention::ready};
    std::shared_ptr<const Image> m_picture;
    std::vector<Message> m_messages; // that lead to the picture
    Text m_state;
    Time m_state_made{};
    bool m_state_old = true;
};

} // namespace qm::sim
