// Owned descriptors and bounded waiting.
#pragma once

#include <chrono>
#include <poll.h>
#include <span>
#include <utility>

namespace qm {

using Clock = std::chrono::steady_clock;

class Descriptor {
  public:
    Descriptor() = default;
    explicit Descriptor(int fd) : m_fd(fd) {}
    Descriptor(Descriptor&& other) noexcept : m_fd(std::exchange(other.m_fd, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(m_fd, other.m_fd);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor() { reset(); }

    [[nodiscard]] int get() const { return m_fd; }
    explicit operator bool() const { return m_fd >= 0; }
    void reset();

  private:
    int m_fd = -1;
};

// Waits until fd is ready for the poll events or the deadline has passed, whatever signals arrive.
// Returns the events that happened, 0 at the deadline, -1 on an error. poll, unlike select, has no limit on
// the number of a descriptor.
int wait_ready(int fd, short events, Clock::time_point deadline);

// The same for several: returns how many have events, which stand in their entries.
int wait_any(std::span<pollfd> entries, Clock::time_point deadline);

} // namespace qm
