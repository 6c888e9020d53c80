// Thresholds eight pixels at a time.
#pragma once

#include "qm_sdk_dual.h"

#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace qm {

// A bit for each of eight pixels, the first one lowest: 1 where the channel is 96 or less.
struct DarkMasks {
    unsigned red = 0, green = 0, blue = 0;
    bool operator==(const DarkMasks&) const = default;
};

// pixels: eight of them, 4 bytes each (blue, green, red, unused). Runs on any processor.
inline DarkMasks dark_masks_portable(const Ouint8* pixels) {
    DarkMasks dark;
    for (unsigned i = 0; i < 8; ++i) {
        Ouint32 pixel = 0;
        for (unsigned byte = 0; byte < 4; ++byte) pixel |= Ouint32{pixels[4 * i + byte]} << (8 * byte);
        // Carries into the top bit of each byte that is above 96, or has it already.
        const unsigned above = ((pixel & 0x7F7F7F7FU) + 0x1F1F1F1FU) | pixel;
        dark.blue |= (~above >> 7U & 1U) << i;
        dark.green |= (~above >> 15U & 1U) << i;
        dark.red |= (~above >> 23U & 1U) << i;
    }
    return dark;
}

#ifdef __SSE2__
inline DarkMasks dark_masks(const Ouint8* pixels) {
    const auto dark_bytes = [](const Ouint8* four) {
        const __m128i values = _mm_loadu_si128(reinterpret_cast<const __m128i*>(four));
        return _mm_cmpeq_epi8(_mm_subs_epu8(values, _mm_set1_epi8(96)), _mm_setzero_si128());
    };
    const __m128i low = dark_bytes(pixels), high = dark_bytes(pixels + 16);
    // One bit a pixel, from the top bit of the channel's byte once it is shifted to the top.
    const auto channel = [&](int shift) {
        const __m128i a = _mm_srai_epi32(_mm_slli_epi32(low, shift), 31);
        const __m128i b = _mm_srai_epi32(_mm_slli_epi32(high, shift), 31);
        const __m128i words = _mm_packs_epi32(a, b);
        return static_cast<unsigned>(_mm_movemask_epi8(_mm_packs_epi16(words, words))) & 0xFFU;
    };
    return {channel(8), channel(16), channel(24)};
}
#else
inline DarkMasks dark_masks(const Ouint8* pixels) { return dark_masks_portable(pixels); }
#endif

} // namespace qm
