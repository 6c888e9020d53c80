// Shades on LEDs that are only on or off.
#pragma once

#include "qm_sdk_dual.hpp"

namespace qm::sign {

// Rows of pixels, each a byte of red, green and blue.
struct RgbPixels {
    std::uint8_t* first;
    std::size_t width, height;
    std::size_t stride; // bytes from row to row
};

// Gives every pixel a colour that light (panel_picture.h) leaves as it is, so that neighbours together shine
// as bright as the picture; nothing for a screen of full colour. What has such a colour keeps it, but for
// colours on a screen of a single one, where brightness counts.
void dither(const RgbPixels& picture, E_ScreenColor_G56 screen);

} // namespace qm::sign
