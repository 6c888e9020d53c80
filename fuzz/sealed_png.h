// A PNG with its checksums set right, so that what lies behind them is reached.
#pragma once

#include "global.h"
#include "support/bytes.h"

#include <string>

namespace qm::fuzz {

inline std::uint32_t big_endian(const std::string& bytes, std::size_t at) {
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i) value = value << 8 | static_cast<Ouint8>(bytes[at + i]);
    return value;
}

// Chunks behind the signature: length, name of 4 bytes, so many bytes, checksum.
inline std::string sealed_png(std::string png) {
    constexpr std::size_t kSignature = 8, kName = 4, kAround = 12;
    for (std::size_t at = kSignature; at + kAround <= png.size();) {
        const std::size_t length = big_endian(png, at);
        if (length > png.size() - at - kAround) break;
        const auto* named = reinterpret_cast<const Ouint8*>(png.data() + at + 4);
        const std::uint32_t crc = calc_crc32({named, kName + length});
        at += kAround + length;
        for (std::size_t i = 0; i < 4; ++i) png[at - 1 - i] = static_cast<char>(crc >> 8 * i);
    }
    return png;
}

} // namespace qm::fuzz
