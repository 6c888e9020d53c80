#include "global.h"

#include "support/crc.h"

namespace qm {
namespace {

template <class Crc> constexpr std::array<Crc, 256> crc_table(Crc polynomial) {
    std::array<Crc, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        Crc crc = static_cast<Crc>(i);
        for (int bit = 0; bit < 8; ++bit)
            crc = static_cast<Crc>((crc & 1U) ? (crc >> 1U) ^ polynomial : crc >> 1U);
        table[i] = crc;
    }
    return table;
}

} // namespace

constexpr std::array<std::uint16_t, 256> crc16_tabel = crc_table<std::uint16_t>(kCrc16Polynomial);
constexpr std::array<std::uint32_t, 256> CRC32_Table = crc_table<std::uint32_t>(kCrc32Polynomial);

std::uint16_t calc_crc(std::span<const std::uint8_t> bytes) {
    static const CrcKernel kernel = crc_kernel<kCrc16Polynomial>();
    return static_cast<std::uint16_t>(kernel(0, bytes));
}

std::uint32_t calc_crc32(std::span<const std::uint8_t> bytes) {
    static const CrcKernel kernel = crc_kernel<kCrc32Polynomial>();
    return ~kernel(0xFFFFFFFFU, bytes);
}

std::uint8_t calc_xor(std::span<const std::uint8_t> bytes) {
    std::uint8_t sum = 0;
    for (const std::uint8_t b : bytes) sum ^= b;
    return sum;
}

} // namespace qm
