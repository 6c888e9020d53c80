// When a timer keeps the screen on.
#pragma once

#include "values.h"

namespace qm::sign {

struct TimerPeriod {
    OnPeriod times;
    std::string text; // as it was given
};

inline constexpr std::size_t kMostTimerPeriods = 255;

[[nodiscard]] TimerPeriod read_timer_period(const std::string& text); // HH:MM-HH:MM, two different times
// What is wrong with periods that overlap; empty when none do.
[[nodiscard]] std::string overlap_of(const std::vector<TimerPeriod>& periods);
[[nodiscard]] std::vector<OnPeriod> times_of(const std::vector<TimerPeriod>& periods);
[[nodiscard]] std::vector<std::string> texts_of(const std::vector<TimerPeriod>& periods);

} // namespace qm::sign
