// Pixels of full-colour screens, from rows of 4 bytes a pixel: blue, green, red, unused.
#pragma once

#include "qm_sdk_dual.h"

#include <cstddef>

namespace qm {

struct FullColourKernels {
    // Red, green, blue; 3 bytes a pixel.
    void (*to_24bit)(const Ouint8* pixels, std::size_t count, Ouint8* out);
    // As pack_565 after gamma; 2 bytes a pixel.
    void (*to_16bit)(const Ouint8* pixels, std::size_t count, Ouint8* out);
};

extern const FullColourKernels kPortableFullColour; // for any processor
extern const FullColourKernels kAvx2FullColour;     // where has_avx2() says so

// The faster ones.
[[nodiscard]] const FullColourKernels& full_colour_kernels();

} // namespace qm
