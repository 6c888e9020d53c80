// Checksums of frames, program files and dynamic-area records.
#pragma once

#include <array>
#include <cstdint>
#include <span>

namespace qm {

// CRC-16/ARC: reflected polynomial 0x8005, initial value 0, no final XOR.
[[nodiscard]] std::uint16_t calc_crc(std::span<const std::uint8_t> bytes);

// The CRC-32 of zlib and Ethernet.
[[nodiscard]] std::uint32_t calc_crc32(std::span<const std::uint8_t> bytes);

// XOR of all bytes; 0 for none.
[[nodiscard]] std::uint8_t calc_xor(std::span<const std::uint8_t> bytes);

extern const std::array<std::uint16_t, 256> crc16_tabel;
extern const std::array<std::uint32_t, 256> CRC32_Table;

} // namespace qm
