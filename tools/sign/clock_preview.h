// Analog clocks as previews show them.
#pragma once

#include "qm_sdk_dual.hpp"

#include <string>

namespace qm::sign {

// The dial in a PNG file with the hands on it, at a time at which none hides another.
[[nodiscard]] std::string with_hands(const std::string& dial, const AnalogClock& clock, const Rect& area);

} // namespace qm::sign
