// Counts connections and tells the owner when one has ended. Any thread may call it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <functional>
#include <mutex>

namespace qm::sim {

class Connections {
  public:
    explicit Connections(std::function<void(bool updated)> on_closed) : m_on_closed(std::move(on_closed)) {}

    void opened();
    void closed(bool updated);
    // From here on the owner is told no more.
    void mute();

    [[nodiscard]] std::size_t accepted() const;
    [[nodiscard]] std::size_t open() const;
    // Waits until none is open; false when one still is after the time.
    [[nodiscard]] bool wait_idle(std::chrono::milliseconds limit) const;

  private:
    std::function<void(bool updated)> m_on_closed;
    mutable std::mutex m_mutex; // guards what follows
    mutable std::condition_variable m_changed;
    std::size_t m_accepted = 0;
    std::size_t m_open = 0;
    bool m_muted = false;
};

} // namespace qm::sim
