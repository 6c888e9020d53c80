// What the user interrupts with, waited for instead of being ended by it.
#pragma once

#include <chrono>
#include <csignal>

namespace qm::ctl {

// Blocks these signals for the thread and those that it starts; those that the process ignores stay ignored.
class AwaitedSignals {
  public:
    AwaitedSignals();
    AwaitedSignals(const AwaitedSignals&) = delete;
    AwaitedSignals& operator=(const AwaitedSignals&) = delete;
    ~AwaitedSignals();

    // Whether one comes within that time.
    [[nodiscard]] bool wait(std::chrono::seconds time) const;

  private:
    ::sigset_t m_set, m_before;
};

} // namespace qm::ctl
