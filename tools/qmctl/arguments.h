// Values of the command line that descriptions do not have.
#pragma once

#include "Session.h"
#include "options/ArgumentList.h"
#include "sign/values.h"

#include <chrono>

namespace qm::ctl {

inline constexpr Name kOffOn[] = {{"off", 0}, {"on", 1}};
inline constexpr Name kLocks[] = {{"unlocked", 0}, {"locked", 1}};

[[nodiscard]] Rect read_rect(const std::string& text); // X,Y,W,H

constexpr std::chrono::hours kDay{24};
[[nodiscard]] std::chrono::seconds read_duration(const std::string& text, // 90s, 10m, 2h30m
                                                 std::chrono::minutes longest);

[[nodiscard]] Controller read_controller(const std::string& text); // IP[:PORT]

} // namespace qm::ctl
