// The time of day at the host of a controller: the system's, or one that was set and runs at a rate of its
// own.
#pragma once

#include "simulator/playback/Clock.h"

#include <optional>

namespace qm::sim {

constexpr unsigned kFastest = 86400; // a day a second

class HostClock {
  public:
    // Both are what the owner gave, or nothing; the rate is seconds a second.
    HostClock(std::optional<LocalSeconds> start, unsigned rate);

    // By the system's clock, which is given, until it was set or has a rate.
    [[nodiscard]] LocalSeconds at(LocalSeconds system) const;
    void set(LocalSeconds time);
    // Goes on from now at the rate.
    void set_rate(unsigned rate, LocalSeconds system);
    [[nodiscard]] unsigned rate() const { return m_rate; }

  private:
    std::optional<LocalSeconds> m_from;
    std::chrono::steady_clock::time_point m_since = std::chrono::steady_clock::now();
    unsigned m_rate;
};

} // namespace qm::sim
