// Packs a rendered image into the controllers' own pixel data.
//
// Single-, double- and three-colour screens take bit planes, active-low: a bit is 0 where the LED is lit.
// The image stands at the same bit position inside its first byte or word as it has on the screen, and rows
// are padded with dark pixels to the alignment unit on both sides. Full-colour screens take 16- or 24-bit
// pixels without padding. In bit planes a channel above 96 is lit.
#pragma once

#include "qm_sdk_dual.h"

#include <cstddef>

namespace qm {

enum TranPixelMode : int {
    Tran_Pixel_Mode0 = 0, // bit planes in bytes, interleaved by plane
    Tran_Pixel_Mode1 = 1, // 16-bit pixels, always zero
    Tran_Pixel_Mode2 = 2, // nothing
    Tran_Pixel_Mode3 = 3, // 16-bit pixels after gamma
    Tran_Pixel_Mode4 = 4, // bit planes in 32-bit words, plane after plane
    Tran_Pixel_Mode5 = 5, // 24-bit pixels
};

// How the pixels of a screen are laid out.
struct PixelLayout {
    int screenColor;      // 1 single, 2 double, 3 three colours, 4 full colour
    int tranMode;         // TranPixelMode
    int doubleColorPixel; // 1: red drives the plane called red; other: red and green change places
    unsigned alignPixels; // unit of the rows of bit planes: 8 or 32 pixels
};

// Bytes that convert_pixels writes; 0 where colour and mode do not go together.
[[nodiscard]] std::size_t pixel_data_size(int left, int width, int height, const PixelLayout& layout);

// Converts width x height ARGB32 pixels (rows of 4 * width bytes: blue, green, red, unused) that stand at
// column left of the screen. out holds pixel_data_size bytes; returns the bytes written.
std::size_t convert_pixels(const Ouint8* pixels, int left, int width, int height, const PixelLayout& layout,
                           Ouint8* out);

} // namespace qm
