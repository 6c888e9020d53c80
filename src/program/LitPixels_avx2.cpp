#include "program/LitPixels.h"

#ifdef __x86_64__
#include <immintrin.h>

namespace qm {

[[gnu::target("avx2")]] void lit_pixels_avx2(const Ouint8* pixels, std::size_t words, Ouint32* lit) {
    const __m256i lowestLit = _mm256_set1_epi8(97);
    // The channels of four pixels together, the last pixel first, for its bit is the lowest; the unused one
    // out.
    const __m256i byChannel =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(12, 8, 4, 0, 13, 9, 5, 1, 14, 10, 6, 2, -1, -1, -1, -1));
    // Then those of all eight.
    const __m256i byEight = _mm256_setr_epi32(4, 0, 5, 1, 6, 2, 7, 3);
    for (std::size_t n = 0; n < words; ++n) {
        const __m256i eight = _mm256_loadu_si256(reinterpret_cast<const __m256i*>(pixels + 32 * n));
        const __m256i above = _mm256_cmpeq_epi8(_mm256_max_epu8(eight, lowestLit), eight);
        const __m256i channels = _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(above, byChannel), byEight);
        lit[n] = static_cast<Ouint32>(_mm256_movemask_epi8(channels));
    }
}

} // namespace qm
#else
namespace qm {

void lit_pixels_avx2(const Ouint8* pixels, std::size_t words, Ouint32* lit) {
    lit_pixels_portable(pixels, words, lit);
}

} // namespace qm
#endif
