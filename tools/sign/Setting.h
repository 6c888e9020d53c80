// What a sign wants of its controller besides programs.
#pragma once

#include "SignDescription.h"

#include <functional>

namespace qm::sign {

enum class SettingState { same, differs, unknown }; // unknown: controllers do not tell

struct Setting {
    std::string name;          // such as brightness
    std::string wanted, found; // in words; found is empty when it is unknown
    SettingState state = SettingState::unknown;
    std::function<Result<>(const Controller&)> set;
};

[[nodiscard]] bool has_settings(const SignDescription& sign);
// Those of the sign, beside what a controller says.
[[nodiscard]] std::vector<Setting> settings_of(const SignDescription& sign, const ControllerStatus& status);

} // namespace qm::sign
