// Signals that a thread waits for instead of being ended by them.
#pragma once

#include <chrono>
#include <csignal>
#include <initializer_list>

namespace qm::ctl {

// Blocks them for the thread and those that it starts; those that the process ignores stay ignored.
class AwaitedSignals {
  public:
    // What the user interrupts with, and others.
    explicit AwaitedSignals(std::initializer_list<int> more = {});
    AwaitedSignals(const AwaitedSignals&) = delete;
    AwaitedSignals& operator=(const AwaitedSignals&) = delete;
    ~AwaitedSignals();

    // The next one; 0 when there is none in that time.
    [[nodiscard]] int wait(std::chrono::seconds time) const;

  private:
    ::sigset_t m_set, m_before;
};

} // namespace qm::ctl
