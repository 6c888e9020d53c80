// Counts connections and tells the owner when one has ended. Any thread may call it.
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace qm::sim {

class Connections {
  public:
    explicit Connections(std::function<void(bool updated)> on_closed) : m_on_closed(std::move(on_closed)) {}

    void opened() {
        ++m_open;
        ++m_accepted; // who sees it counted sees it open
    }
    void closed(bool updated) {
        {
            const std::lock_guard lock(m_mutex);
            --m_open;
        }
        m_changed.notify_all();
        if (!m_muted && m_on_closed) m_on_closed(updated);
    }
    // From here on the owner is told no more.
    void mute() { m_muted = true; }

    [[nodiscard]] std::size_t accepted() const { return m_accepted; }
    [[nodiscard]] std::size_t open() const { return m_open; }
    // Waits until none is open; false when one still is after the time.
    [[nodiscard]] bool wait_idle(std::chrono::milliseconds limit) const {
        std::unique_lock lock(m_mutex);
        return m_changed.wait_for(lock, limit, [this] { return m_open == 0; });
    }

  private:
    std::function<void(bool updated)> m_on_closed;
    mutable std::mutex m_mutex; // held while the last one may close, so that no waiter misses it
    mutable std::condition_variable m_changed;
    std::atomic<std::size_t> m_accepted{0}, m_open{0};
    std::atomic<bool> m_muted{false};
};

} // namespace qm::sim
