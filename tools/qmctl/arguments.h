// Values of the command line that descriptions do not have.
#pragma once

#include "Session.h"
#include "options/ArgumentList.h"
#include "sign/values.h"

namespace qm::ctl {

inline constexpr Name kOffOn[] = {{"off", 0}, {"on", 1}};
inline constexpr Name kLocks[] = {{"unlocked", 0}, {"locked", 1}};

[[nodiscard]] Rect read_rect(const std::string& text);                               // X,Y,W,H
[[nodiscard]] Controller read_controller(const std::string& text);                   // IP[:PORT]
[[nodiscard]] std::vector<Controller> read_controllers(const std::string& text);     // separated by commas
[[nodiscard]] std::vector<Controller> read_controller_list(const std::string& path); // a file, one a line

} // namespace qm::ctl
