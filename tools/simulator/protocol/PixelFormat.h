// How LED screens are lit, and how pixels lie in the data for them.
#pragma once

#include "support/controller_types.h"

#include <cstdint>

namespace qm::sim {

// The kinds of LED screens, numbered as the controllers number them.
enum class ScreenColor : std::uint8_t {
    single = 1, // red LEDs
    dual = 2,   // red and green, on or off: yellow together
    three = 3,  // red, green and blue, on or off
    full = 4,   // red, green and blue in grades
};

// Numbered as the controllers number them.
enum class TransferMode {
    planes8 = 0,  // a byte of each plane for every 8 pixels, plane by plane in turn
    rgb565 = 3,   // 16 bits a pixel: blue in the top five, green, red in the low five
    planes32 = 4, // 32-bit words of 32 pixels, one whole plane after the other
    rgb888 = 5,   // three bytes a pixel
};

// How a controller type packs pixels; in planes of 8 pixels when it is not known.
[[nodiscard]] constexpr TransferMode packing_of(std::uint16_t controllerType) {
    return static_cast<TransferMode>(transfer_mode_of(controllerType).value_or(0));
}

struct PixelFormat {
    TransferMode mode = TransferMode::planes8;
    ScreenColor color = ScreenColor::single;
};

} // namespace qm::sim
