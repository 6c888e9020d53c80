// Reflected cyclic redundancy checks of up to 32 bits, without initial value or final XOR.
//
// A check of 16 bits is one of 32 bits whose polynomial has been moved up: its reflected form has the same
// low bits and zeros above, and so has the remainder. One kernel serves both.
#pragma once

#include <cstdint>
#include <span>

namespace qm {

constexpr std::uint32_t kCrc16Polynomial = 0xA001, kCrc32Polynomial = 0xEDB88320;

// Continues a remainder over more bytes. The polynomials are the two above.
using CrcKernel = std::uint32_t (*)(std::uint32_t crc, std::span<const std::uint8_t> bytes);

// Sixteen bytes a step, a table for each place. Runs on any processor.
template <std::uint32_t Polynomial>
[[nodiscard]] std::uint32_t crc_by_tables(std::uint32_t crc, std::span<const std::uint8_t> bytes);

// Carry-less multiplication; where has_carryless_multiply() says so.
template <std::uint32_t Polynomial>
[[nodiscard]] std::uint32_t crc_by_folding(std::uint32_t crc, std::span<const std::uint8_t> bytes);

// The one that is faster on this processor.
template <std::uint32_t Polynomial> [[nodiscard]] CrcKernel crc_kernel();

} // namespace qm
