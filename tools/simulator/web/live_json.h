// What the page and scripts are told of controllers.
#pragma once

#include "simulator/device/Fleet.h"

#include <nlohmann/json_fwd.hpp>

namespace qm::sim {

// The object of --json, and besides "next" (the program whose turn comes then), "rate" (of the clock),
// "fault" (as it is posted) and "outlines" (rectangles of the areas on the screen).
[[nodiscard]] nlohmann::json live_state(const Exchange& exchange);

[[nodiscard]] nlohmann::json json_of(const std::vector<LogEntry>& entries);

// Names, places and screens.
[[nodiscard]] nlohmann::json controllers_json(const Fleet& fleet);

// As text; bytes that are no UTF-8 are replaced.
[[nodiscard]] std::string text_of(const nlohmann::json& value);

} // namespace qm::sim
