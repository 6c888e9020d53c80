#include "program/pixels/LitPixels.h"

#ifdef __x86_64__
#include <immintrin.h>

namespace qm {
namespace {

// How far ahead, in bytes, a picture is fetched into the cache: the processor's own fetching ends with each
// memory page.
constexpr std::size_t kAhead = 2048;

[[gnu::target("avx2")]] inline __m256i load(const void* bytes) {
    return _mm256_loadu_si256(static_cast<const __m256i*>(bytes));
}

[[gnu::target("avx2")]] void find_dark_avx2(const Ouint8* pixels, std::size_t count, DarkBits* dark) {
    const __m256i highestDark = _mm256_set1_epi8(96);
    // The channels of four pixels together, the last pixel first, for its bit is the lowest.
    const __m256i byChannel =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(12, 8, 4, 0, 13, 9, 5, 1, 14, 10, 6, 2, 15, 11, 7, 3));
    // The channels of all eight pixels together.
    const __m256i ofAllEight = _mm256_setr_epi32(4, 0, 5, 1, 6, 2, 7, 3);
#pragma GCC unroll 4
    for (std::size_t n = 0; n < count; ++n) {
        _mm_prefetch(reinterpret_cast<const char*>(pixels + 32 * n + kAhead), _MM_HINT_T0);
        const __m256i eight = load(pixels + 32 * n);
        const __m256i below = _mm256_cmpeq_epi8(_mm256_min_epu8(eight, highestDark), eight);
        const __m256i channels =
            _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(below, byChannel), ofAllEight);
        dark[n] = static_cast<DarkBits>(_mm256_movemask_epi8(channels));
    }
}

[[gnu::target("avx2")]] inline void store_half(Ouint8* out, __m128i bytes) {
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), bytes);
}

[[gnu::target("avx2")]] void split_avx2(const DarkBits* dark, std::size_t count, ByteOrder order,
                                        const ChannelBytes& out) {
    const __m128i byChannel = order == ByteOrder::straight
                                  ? _mm_setr_epi8(0, 4, 8, 12, 1, 5, 9, 13, 2, 6, 10, 14, 3, 7, 11, 15)
                                  : _mm_setr_epi8(12, 8, 4, 0, 13, 9, 5, 1, 14, 10, 6, 2, 15, 11, 7, 3);
    const __m256i ofAllEight = _mm256_setr_epi32(0, 4, 1, 5, 2, 6, 3, 7);
    std::size_t n = 0;
    for (; count - n >= 8; n += 8) {
        const __m256i channels = _mm256_permutevar8x32_epi32(
            _mm256_shuffle_epi8(load(dark + n), _mm256_broadcastsi128_si256(byChannel)), ofAllEight);
        const __m128i blueGreen = _mm256_castsi256_si128(channels);
        store_half(out.blue + n, blueGreen);
        store_half(out.green + n, _mm_unpackhi_epi64(blueGreen, blueGreen));
        store_half(out.red + n, _mm256_extracti128_si256(channels, 1));
    }
    kPortableLitPixels.split(dark + n, count - n, order, {out.red + n, out.green + n, out.blue + n});
}

} // namespace

constexpr LitPixelKernels kAvx2LitPixels{find_dark_avx2, split_avx2};

} // namespace qm
#else
namespace qm {

const LitPixelKernels kAvx2LitPixels = kPortableLitPixels;

} // namespace qm
#endif
