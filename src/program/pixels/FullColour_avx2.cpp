#include "program/pixels/FullColour.h"

#ifdef __x86_64__
#include <algorithm>
#include <immintrin.h>

namespace qm {
namespace {

[[gnu::target("avx2")]] inline __m256i load(const Ouint8* eightPixels) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(eightPixels));
}

[[gnu::target("avx2")]] inline void store(Ouint8* out, __m256i bytes) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), bytes);
}

// 24 bytes of eight pixels, as six numbers of 32 bits at the places that the order gives them.
[[gnu::target("avx2")]] inline __m256i pack_24bit(const Ouint8* pixels, __m256i order) {
    // 12 bytes of each four pixels first.
    const __m256i turned =
        _mm256_broadcastsi128_si256(_mm_setr_epi8(2, 1, 0, 6, 5, 4, 10, 9, 8, 14, 13, 12, -1, -1, -1, -1));
    return _mm256_permutevar8x32_epi32(_mm256_shuffle_epi8(load(pixels), turned), order);
}

// 32 pixels a step, so that whole registers are stored, each of them once.
[[gnu::target("avx2")]] void to_24bit_avx2(const Ouint8* pixels, std::size_t count, Ouint8* out) {
    const __m256i atBegin = _mm256_setr_epi32(0, 1, 2, 4, 5, 6, 7, 7);
    const __m256i lastTwoFirst = _mm256_setr_epi32(2, 4, 5, 6, 7, 7, 0, 1);
    const __m256i lastFourFirst = _mm256_setr_epi32(5, 6, 7, 7, 0, 1, 2, 4);
    const __m256i atEnd = _mm256_setr_epi32(7, 7, 0, 1, 2, 4, 5, 6);
    std::size_t i = 0;
    for (; count - i >= 32; i += 32) {
        const Ouint8* in = pixels + 4 * i;
        const __m256i first = pack_24bit(in, atBegin), second = pack_24bit(in + 32, lastTwoFirst);
        const __m256i third = pack_24bit(in + 64, lastFourFirst), fourth = pack_24bit(in + 96, atEnd);
        store(out + 3 * i, _mm256_blend_epi32(first, second, 0b11000000));
        store(out + 3 * i + 32, _mm256_blend_epi32(second, third, 0b11110000));
        store(out + 3 * i + 64, _mm256_blend_epi32(third, fourth, 0b11111100));
    }
    for (; 3 * (count - i) >= 32; i += 8) // 8 bytes too many, which the next store overwrites
        store(out + 3 * i, pack_24bit(pixels + 4 * i, atBegin));
    kPortableFullColour.to_24bit(pixels + 4 * i, count - i, out + 3 * i);
}

// 256 times the gamma of a channel without a table: its square over 256, rounded, is never more than 16 bits.
constexpr unsigned scaled_gamma(unsigned channel) { return std::max(channel * (channel + 1), 128U) - 128; }
static_assert([] {
    for (unsigned channel = 0; channel < 256; ++channel)
        if (gamma_table()[channel] != scaled_gamma(channel) >> 8U || scaled_gamma(channel) > 0xFFFF)
            return false;
    return true;
}());

// scaled_gamma of sixteen channels.
[[gnu::target("avx2")]] inline __m256i scaled_gamma(__m256i channels) {
    const __m256i next = _mm256_add_epi16(channels, _mm256_set1_epi16(1));
    return _mm256_subs_epu16(_mm256_mullo_epi16(channels, next), _mm256_set1_epi16(128));
}

// Eight pixels of 16 bits, each in the low half of 32.
[[gnu::target("avx2")]] inline __m256i pack_565(__m256i pixels) {
    const __m256i lowBytes = _mm256_set1_epi16(0xFF);
    const __m256i blueRed = scaled_gamma(_mm256_and_si256(pixels, lowBytes));
    const __m256i green = scaled_gamma(_mm256_srli_epi16(pixels, 8));
    const __m256i blue5 = _mm256_and_si256(blueRed, _mm256_set1_epi32(0xF800));
    const __m256i green6 = _mm256_srli_epi32(_mm256_and_si256(green, _mm256_set1_epi32(0xFC00)), 5);
    const __m256i red5 = _mm256_srli_epi32(blueRed, 27);
    return _mm256_or_si256(_mm256_or_si256(blue5, green6), red5);
}

[[gnu::target("avx2")]] void to_16bit_avx2(const Ouint8* pixels, std::size_t count, Ouint8* out) {
    std::size_t i = 0;
    for (; count - i >= 16; i += 16) {
        const __m256i first = pack_565(load(pixels + 4 * i)), second = pack_565(load(pixels + 4 * i + 32));
        const __m256i quarters = _mm256_packus_epi32(first, second);
        store(out + 2 * i, _mm256_permute4x64_epi64(quarters, 0b11'01'10'00));
    }
    kPortableFullColour.to_16bit(pixels + 4 * i, count - i, out + 2 * i);
}

} // namespace

constexpr FullColourKernels kAvx2FullColour{to_24bit_avx2, to_16bit_avx2};

} // namespace qm
#else
namespace qm {

const FullColourKernels kAvx2FullColour = kPortableFullColour;

} // namespace qm
#endif
