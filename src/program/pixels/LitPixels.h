// The threshold of bit planes: which channels of which pixels are lit, and which are dark.
#pragma once

#include "qm_sdk_dual.h"

#include <cstddef>

namespace qm {

// Which channels of eight pixels are dark, 96 or less: a byte of blue, the lowest, then of green and of red,
// with a bit for each pixel, the first one on top. The highest byte means nothing.
using DarkBits = Ouint32;

// Where the bytes of each channel go.
struct ChannelBytes {
    Ouint8 *red, *green, *blue;
};

// Four bytes as they come, or the last one first; then there are whole fours of them.
enum class ByteOrder { straight, fours_reversed };

struct LitPixelKernels {
    // Takes 8 * count pixels, 4 bytes each: blue, green, red, unused.
    void (*find_dark)(const Ouint8* pixels, std::size_t count, DarkBits* dark);
    // Takes dark bits apart, into a byte of each channel.
    void (*split)(const DarkBits* dark, std::size_t count, ByteOrder order, const ChannelBytes& out);
};

extern const LitPixelKernels kPortableLitPixels; // for any processor
extern const LitPixelKernels kAvx2LitPixels;     // where has_avx2() says so

// Those that are faster on this processor.
[[nodiscard]] const LitPixelKernels& lit_pixel_kernels();

} // namespace qm
