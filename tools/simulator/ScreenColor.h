// The kinds of LED screens, numbered as the controllers number them.
#pragma once

#include <cstdint>

namespace qm::sim {

enum class ScreenColor : std::uint8_t {
    single = 1, // red LEDs
    dual = 2,   // red and green, on or off: yellow together
    three = 3,  // red, green and blue, on or off
    full = 4,   // red, green and blue in grades
};

} // namespace qm::sim
