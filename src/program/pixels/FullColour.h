// Pixels of full-colour screens, from rows of 4 bytes a pixel: blue, green, red, unused.
#pragma once

#include "qm_sdk_dual.h"

#include <array>
#include <cstddef>

namespace qm {

using GammaTable = std::array<Ouint8, 256>;
// The controllers' gamma of 2 for 16-bit pixels.
[[nodiscard]] constexpr GammaTable gamma_table() {
    GammaTable table{};
    for (unsigned i = 0; i < 256; ++i) {
        const double base = (i + 0.5) / 256.0;
        const double value = 256.0 * base * base - 0.5;
        table[i] = value > 0 ? static_cast<Ouint8>(value) : Ouint8{0};
    }
    return table;
}

// A full-colour pixel of 16 bits: blue in the top five, green in the middle six, red in the low five.
[[nodiscard]] constexpr Ouint16 pack_565(unsigned red, unsigned green, unsigned blue) {
    return static_cast<Ouint16>(((blue << 8U) & 0xF800U) + ((green << 3U) & 0x07E0U) + (red >> 3U));
}

struct FullColourKernels {
    // Red, green, blue; 3 bytes a pixel.
    void (*to_24bit)(const Ouint8* pixels, std::size_t count, Ouint8* out);
    // As pack_565 after gamma; 2 bytes a pixel.
    void (*to_16bit)(const Ouint8* pixels, std::size_t count, Ouint8* out);
};

extern const FullColourKernels kPortableFullColour; // for any processor
extern const FullColourKernels kAvx2FullColour;     // where has_avx2() says so

// Those that are faster on this processor.
[[nodiscard]] const FullColourKernels& full_colour_kernels();

} // namespace qm
