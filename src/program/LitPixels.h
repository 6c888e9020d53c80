// Which channels of which pixels are lit: the threshold of bit planes.
#pragma once

#include "qm_sdk_dual.h"

#include <cstddef>

namespace qm {

// Eight pixels make a word: blue in its lowest byte, then green, red and the unused channel, and in each byte
// a bit for each pixel, the first one on top. A bit is 1 where the channel is above 96.
using LitPixels = void (*)(const Ouint8* pixels, std::size_t words, Ouint32* lit);

void lit_pixels_portable(const Ouint8* pixels, std::size_t words, Ouint32* lit); // for any processor
void lit_pixels_avx2(const Ouint8* pixels, std::size_t words, Ouint32* lit);     // where has_avx2() says so

// The faster one.
[[nodiscard]] LitPixels lit_pixels();

} // namespace qm
