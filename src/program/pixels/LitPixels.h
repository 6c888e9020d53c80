// The threshold of bit planes: which channels of which pixels are lit, and which are dark.
#pragma once

#include "qm_sdk_dual.h"

#include <cstddef>

namespace qm {

// A word for each eight pixels: blue in its lowest byte, then green and red, and in each of them a bit for
// each pixel, the first one on top. A bit is 1 where the channel is dark, 96 or less. The highest byte means
// nothing.
struct ChannelBytes {
    Ouint8 *red, *green, *blue;
};

// Four bytes as they come, or the last one first; then there are whole fours of them.
enum class ByteOrder { straight, fours_reversed };

struct LitPixelKernels {
    // Takes 8 * count pixels, 4 bytes each: blue, green, red, unused.
    void (*find_dark)(const Ouint8* pixels, std::size_t count, Ouint32* dark);
    // Takes words apart, into a byte of each channel.
    void (*split)(const Ouint32* dark, std::size_t count, ByteOrder order, const ChannelBytes& out);
};

extern const LitPixelKernels kPortableLitPixels; // for any processor
extern const LitPixelKernels kAvx2LitPixels;     // where has_avx2() says so

// The faster ones.
[[nodiscard]] const LitPixelKernels& lit_pixel_kernels();

} // namespace qm
