#include "support/crc.h"

#include <array>

namespace qm {
namespace {

constexpr std::size_t kStep = 16;

// Table n holds the remainders of a byte with n bytes of zeros behind it.
using Tables = std::array<std::array<std::uint32_t, 256>, kStep>;

constexpr Tables make_tables(std::uint32_t polynomial) {
    Tables tables{};
    for (std::uint32_t byte = 0; byte < 256; ++byte) {
        std::uint32_t crc = byte;
        for (int bit = 0; bit < 8; ++bit) crc = (crc & 1U) ? (crc >> 1U) ^ polynomial : crc >> 1U;
        tables[0][byte] = crc;
    }
    for (std::size_t n = 1; n < kStep; ++n)
        for (std::size_t byte = 0; byte < 256; ++byte) {
            const std::uint32_t before = tables[n - 1][byte];
            tables[n][byte] = before >> 8U ^ tables[0][before & 0xFFU];
        }
    return tables;
}

template <std::uint32_t Polynomial> constexpr Tables kTables = make_tables(Polynomial);

} // namespace

template <std::uint32_t Polynomial>
std::uint32_t crc_by_tables(std::uint32_t crc, std::span<const std::uint8_t> bytes) {
    constexpr const Tables& tables = kTables<Polynomial>;
    while (bytes.size() >= kStep) {
        std::uint32_t next = 0;
        for (std::size_t i = 0; i < kStep; ++i) {
            const std::uint32_t carried = i < 4 ? crc >> (8 * i) & 0xFFU : 0;
            next ^= tables[kStep - 1 - i][bytes[i] ^ carried];
        }
        crc = next;
        bytes = bytes.subspan(kStep);
    }
    for (const std::uint8_t byte : bytes) crc = tables[0][(crc ^ byte) & 0xFFU] ^ crc >> 8U;
    return crc;
}

template std::uint32_t crc_by_tables<kCrc16Polynomial>(std::uint32_t, std::span<const std::uint8_t>);
template std::uint32_t crc_by_tables<kCrc32Polynomial>(std::uint32_t, std::span<const std::uint8_t>);

} // namespace qm
