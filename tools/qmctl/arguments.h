// Values of the command line that descriptions do not have, and results of several.
#pragma once

#include "Session.h"
#include "options/ArgumentList.h"
#include "sign/values.h"

namespace qm::ctl {

inline constexpr Name kOffOn[] = {{"off", 0}, {"on", 1}};

[[nodiscard]] Controller read_controller(const std::string& text);                   // IP[:PORT]
[[nodiscard]] std::vector<Controller> read_controllers(const std::string& text);     // separated by commas
[[nodiscard]] std::vector<Controller> read_controller_list(const std::string& path); // a file, one a line

// The numbers or texts of a list in one line.
template <class Values> std::string listed(const Values& values) {
    std::string words;
    for (const auto& value : values) {
        if (!words.empty()) words += ", ";
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>)
            words += std::to_string(value);
        else
            words += value;
    }
    return words;
}

} // namespace qm::ctl
