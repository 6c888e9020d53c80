// CRC-32 beside zlib's, CRC-16 beside the loop over a table that every protocol stack begins with.
#include "compare.h"

#include "global.h"

#include <benchmark/benchmark.h>
#include <zlib.h>

#include <array>
#include <memory>

namespace qm::bench {
namespace {

constexpr std::size_t kBytes = 1U << 20U;

constexpr std::array<Ouint16, 256> kTable = [] {
    std::array<Ouint16, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        unsigned crc = i;
        for (int bit = 0; bit < 8; ++bit) crc = crc & 1U ? (crc >> 1U) ^ 0xA001U : crc >> 1U;
        table[i] = static_cast<Ouint16>(crc);
    }
    return table;
}();

Ouint16 crc16_bytewise(Bytes bytes) {
    unsigned crc = 0;
    for (const Ouint8 b : bytes) crc = kTable[(crc ^ b) & 0xFFU] ^ (crc >> 8U);
    return static_cast<Ouint16>(crc);
}

Ouint32 crc32_zlib(Bytes bytes) {
    return static_cast<Ouint32>(::crc32(0, bytes.data(), static_cast<uInt>(bytes.size())));
}

} // namespace

void checksums() {
    const auto data = std::make_shared<const ByteBuffer>(random_bytes(kBytes));
    require(calc_crc32(*data) == crc32_zlib(*data), "CRC-32: not as zlib's");
    compare_speed("CRC-32 of 1 MiB", kBytes, [=] { benchmark::DoNotOptimize(calc_crc32(*data)); },
                  {{"zlib", [=] { benchmark::DoNotOptimize(crc32_zlib(*data)); }, 1}});

    require(calc_crc(*data) == crc16_bytewise(*data), "CRC-16: not as the plain loop's");
    compare_speed("CRC-16 of 1 MiB", kBytes, [=] { benchmark::DoNotOptimize(calc_crc(*data)); },
                  {{"byte by byte", [=] { benchmark::DoNotOptimize(crc16_bytewise(*data)); }, 8}});
}

} // namespace qm::bench
