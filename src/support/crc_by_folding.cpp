#include "support/crc.h"
#include "support/processor.h"

#ifdef __x86_64__
#include <array>
#include <immintrin.h>

namespace qm {
namespace {

constexpr int kBlock = 16, kLanes = 4;

// x^power modulo the polynomial. Reflected: the top bit is the coefficient of 1.
constexpr std::uint32_t power_of_x(int power, std::uint32_t polynomial) {
    std::uint32_t value = 0x80000000U;
    for (; power > 0; --power) value = (value & 1U) ? value >> 1U ^ polynomial : value >> 1U;
    return value;
}

// What the halves of a block are multiplied by to stand so many bytes further on. Reflected, the first half
// has the higher powers, and a product comes out one bit further on by itself.
struct Shift {
    std::uint64_t first, second;
};
constexpr Shift shift_by(int bytes, std::uint32_t polynomial) {
    const auto factor = [=](unsigned bits) { return std::uint64_t{power_of_x(bits - 1, polynomial)} << 32U; };
    return {factor(8 * bytes + 64), factor(8 * bytes)};
}

[[gnu::target("pclmul")]] inline __m128i load(const std::uint8_t* block) {
    return _mm_loadu_si128(reinterpret_cast<const __m128i*>(block));
}

[[gnu::target("pclmul")]] inline __m128i factors(const Shift& shift) {
    return _mm_set_epi64x(static_cast<long long>(shift.second), static_cast<long long>(shift.first));
}

// A block moved on and added to the one that stands there.
[[gnu::target("pclmul")]] inline __m128i fold(__m128i block, __m128i shift, __m128i there) {
    const __m128i first = _mm_clmulepi64_si128(block, shift, 0x00);
    const __m128i second = _mm_clmulepi64_si128(block, shift, 0x11);
    return _mm_xor_si128(_mm_xor_si128(first, second), there);
}

using Block = std::array<std::uint8_t, kBlock>;

// Folds whole blocks, of at least as many as there are lanes, into one with the same remainder. What is left
// of the bytes is behind them.
[[gnu::target("pclmul")]] Block fold_blocks(std::uint32_t crc, std::span<const std::uint8_t>& bytes,
                                            const Shift& byLanes, const Shift& byBlock) {
    const std::uint8_t* in = bytes.data();
    const std::uint8_t* const end = in + bytes.size() / kBlock * kBlock;
    bytes = bytes.subspan(static_cast<std::size_t>(end - in));

    __m128i a = _mm_xor_si128(load(in), _mm_cvtsi32_si128(static_cast<int>(crc)));
    __m128i b = load(in + kBlock), c = load(in + 2 * kBlock), d = load(in + 3 * kBlock);
    in += kLanes * kBlock;
    for (const __m128i shift = factors(byLanes); end - in >= kLanes * kBlock; in += kLanes * kBlock) {
        a = fold(a, shift, load(in));
        b = fold(b, shift, load(in + kBlock));
        c = fold(c, shift, load(in + 2 * kBlock));
        d = fold(d, shift, load(in + 3 * kBlock));
    }
    const __m128i shift = factors(byBlock);
    d = fold(fold(fold(a, shift, b), shift, c), shift, d);
    for (; in < end; in += kBlock) d = fold(d, shift, load(in));

    Block folded;
    _mm_storeu_si128(reinterpret_cast<__m128i*>(folded.data()), d);
    return folded;
}

} // namespace

template <std::uint32_t Polynomial>
std::uint32_t crc_by_folding(std::uint32_t crc, std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kLanes * kBlock) return crc_by_tables<Polynomial>(crc, bytes);
    static constexpr Shift kByLanes = shift_by(kLanes * kBlock, Polynomial);
    static constexpr Shift kByBlock = shift_by(kBlock, Polynomial);
    const Block folded = fold_blocks(crc, bytes, kByLanes, kByBlock);
    return crc_by_tables<Polynomial>(crc_by_tables<Polynomial>(0, folded), bytes);
}

} // namespace qm
#else
namespace qm {

template <std::uint32_t Polynomial>
std::uint32_t crc_by_folding(std::uint32_t crc, std::span<const std::uint8_t> bytes) {
    return crc_by_tables<Polynomial>(crc, bytes);
}

} // namespace qm
#endif

namespace qm {

template <std::uint32_t Polynomial> CrcKernel crc_kernel() {
    return has_carryless_multiply() ? crc_by_folding<Polynomial> : crc_by_tables<Polynomial>;
}

template std::uint32_t crc_by_folding<kCrc16Polynomial>(std::uint32_t, std::span<const std::uint8_t>);
template std::uint32_t crc_by_folding<kCrc32Polynomial>(std::uint32_t, std::span<const std::uint8_t>);
template CrcKernel crc_kernel<kCrc16Polynomial>();
template CrcKernel crc_kernel<kCrc32Polynomial>();

} // namespace qm
