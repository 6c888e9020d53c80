// The Wi-Fi module of a controller, which is set up with AT commands.
#pragma once

#include "simulator/controller/ControllerState.h"

#include <string>
#include <string_view>

namespace qm::sim {

// Carries out one command. Every text is answered.
[[nodiscard]] std::string answer_of(WifiSetting& setting, std::string_view command);

} // namespace qm::sim
