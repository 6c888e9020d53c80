// Blocks of 32 bytes. One without anything to escape is stored as it is; another goes by 8 bytes through a
// shuffle that makes room behind the bytes to escape, or closes the room again, whatever their number.
#include "cmdPacket/stuffing.h"

#ifdef __x86_64__
#include <array>
#include <bit>
#include <immintrin.h>

namespace qm {
namespace {

constexpr std::size_t kBlock = 32, kPart = 8;

// For 8 bytes some of which are marked: which bytes a shuffle takes, by the mask of the marked ones. spread
// takes each byte and behind a marked one also the one 8 further on, the second byte of its escape; close
// leaves the marked ones out.
struct Shuffles {
    alignas(16) std::array<std::array<Ouint8, 16>, 256> spread{};
    alignas(16) std::array<std::array<Ouint8, 8>, 256> close{};
};
constexpr Shuffles kShuffles = [] {
    Shuffles shuffles;
    for (unsigned mask = 0; mask < 256; ++mask) {
        std::size_t spread = 0, closed = 0;
        for (unsigned i = 0; i < kPart; ++i) {
            const bool marked = mask >> i & 1U;
            shuffles.spread[mask][spread++] = static_cast<Ouint8>(i);
            if (marked) shuffles.spread[mask][spread++] = static_cast<Ouint8>(i + kPart);
            if (!marked) shuffles.close[mask][closed++] = static_cast<Ouint8>(i);
        }
    }
    return shuffles;
}();

[[gnu::target("avx2")]] inline __m256i load(const Ouint8* block) {
    return _mm256_loadu_si256(reinterpret_cast<const __m256i*>(block));
}

[[gnu::target("avx2")]] inline void store(Ouint8* out, __m256i block) {
    _mm256_storeu_si256(reinterpret_cast<__m256i*>(out), block);
}

[[gnu::target("avx2")]] inline __m256i equal(__m256i block, unsigned byte) {
    return _mm256_cmpeq_epi8(block, _mm256_set1_epi8(static_cast<char>(byte)));
}

[[gnu::target("avx2")]] inline __m256i either(__m256i block, unsigned one, unsigned other) {
    return _mm256_or_si256(equal(block, one), equal(block, other));
}

[[gnu::target("avx2")]] inline unsigned bits(__m256i found) {
    return static_cast<unsigned>(_mm256_movemask_epi8(found));
}

// All ones in the bytes that need an escape: 5A, 5B, A5 and A6. The last two are -5B and -5A, so one
// comparison finds all four: without sign and lowest bit they are 5A, and no other byte is.
[[gnu::target("avx2")]] inline __m256i escapes(__m256i block) {
    const __m256i even = _mm256_and_si256(_mm256_abs_epi8(block), _mm256_set1_epi8(static_cast<char>(0xFE)));
    return equal(even, 0x5A);
}

[[gnu::target("avx2")]] std::size_t count_avx2(Bytes bytes) {
    __m256i counts = _mm256_setzero_si256();
    std::size_t at = 0;
    while (bytes.size() - at >= kBlock) {
        __m256i run = _mm256_setzero_si256(); // a byte of it counts up to 255
        for (int blocks = 0; blocks < 255 && bytes.size() - at >= kBlock; ++blocks, at += kBlock)
            run = _mm256_sub_epi8(run, escapes(load(&bytes[at])));
        counts = _mm256_add_epi64(counts, _mm256_sad_epu8(run, _mm256_setzero_si256()));
    }
    const __m128i halves = _mm_add_epi64(_mm256_castsi256_si128(counts), _mm256_extracti128_si256(counts, 1));
    const auto count = static_cast<std::size_t>(_mm_cvtsi128_si64(halves) + _mm_extract_epi64(halves, 1));
    return count + kPortableStuffing.count(bytes.subspan(at));
}

// Writes 8 of the lead bytes, each of those with a bit followed by its second byte.
[[gnu::target("avx2")]] inline Ouint8* spread(__m128i leadsAndSeconds, unsigned mask, Ouint8* out) {
    const auto* shuffle = reinterpret_cast<const __m128i*>(kShuffles.spread[mask & 0xFFU].data());
    _mm_storeu_si128(reinterpret_cast<__m128i*>(out),
                     _mm_shuffle_epi8(leadsAndSeconds, _mm_load_si128(shuffle)));
    return out + kPart + std::popcount(mask & 0xFFU);
}

[[gnu::target("avx2,popcnt")]] std::size_t stuff_avx2(Bytes bytes, Ouint8* out) {
    Ouint8* p = out;
    std::size_t at = 0;
    // The last part writes 16 bytes.
    for (; bytes.size() - at >= kBlock + kPart; at += kBlock) {
        const __m256i block = load(&bytes[at]);
        const unsigned mask = bits(escapes(block));
        if (mask == 0) {
            store(p, block);
            p += kBlock;
            continue;
        }
        const __m256i below = either(block, 0x5A, 0xA5);
        const __m256i lead = _mm256_sub_epi8(block, below);
        const __m256i second = _mm256_sub_epi8(_mm256_set1_epi8(1), below);
        const __m256i even = _mm256_unpacklo_epi64(lead, second), odd = _mm256_unpackhi_epi64(lead, second);
        p = spread(_mm256_castsi256_si128(even), mask, p);
        p = spread(_mm256_castsi256_si128(odd), mask >> 8U, p);
        p = spread(_mm256_extracti128_si256(even, 1), mask >> 16U, p);
        p = spread(_mm256_extracti128_si256(odd, 1), mask >> 24U, p);
    }
    p += kPortableStuffing.stuff(bytes.subspan(at), p);
    return static_cast<std::size_t>(p - out);
}

// Writes 8 bytes but those with a bit.
[[gnu::target("avx2")]] inline Ouint8* close(__m128i part, unsigned mask, Ouint8* out) {
    const auto* shuffle = reinterpret_cast<const __m128i*>(kShuffles.close[mask & 0xFFU].data());
    _mm_storel_epi64(reinterpret_cast<__m128i*>(out), _mm_shuffle_epi8(part, _mm_loadl_epi64(shuffle)));
    return out + kPart - std::popcount(mask & 0xFFU);
}

[[gnu::target("avx2,popcnt")]] std::size_t restore_avx2(Bytes stuffed, Ouint8* out) {
    Ouint8* p = out;
    std::size_t at = 0;
    unsigned carried = 0; // 1 where the block begins with the second byte of a pair
    for (; stuffed.size() - at >= kBlock + 1; at += kBlock) {
        const __m256i block = load(&stuffed[at]);
        const __m256i escape = either(block, 0x5B, 0xA6);
        if ((bits(escape) | carried) == 0) {
            store(p, block);
            p += kBlock;
            continue;
        }
        const __m256i next = load(&stuffed[at + 1]);
        const __m256i below = _mm256_and_si256(escape, equal(next, 2));
        const unsigned pairs = bits(_mm256_and_si256(escape, either(next, 1, 2)));
        const unsigned seconds = pairs << 1U | carried;
        carried = pairs >> (kBlock - 1);
        const __m256i values = _mm256_add_epi8(block, below);
        const __m128i low = _mm256_castsi256_si128(values), high = _mm256_extracti128_si256(values, 1);
        p = close(low, seconds, p);
        p = close(_mm_unpackhi_epi64(low, low), seconds >> 8U, p);
        p = close(high, seconds >> 16U, p);
        p = close(_mm_unpackhi_epi64(high, high), seconds >> 24U, p);
    }
    p += kPortableStuffing.restore(stuffed.subspan(at + carried), p);
    return static_cast<std::size_t>(p - out);
}

} // namespace

constexpr StuffingKernels kAvx2Stuffing{count_avx2, stuff_avx2, restore_avx2};

} // namespace qm
#else
namespace qm {

const StuffingKernels kAvx2Stuffing = kPortableStuffing;

} // namespace qm
#endif
