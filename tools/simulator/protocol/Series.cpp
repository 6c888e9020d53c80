#include "simulator/protocol/Series.h"

namespace qm::sim {
namespace {

struct Variants {
    std::uint8_t series, first, last;
    TransferMode mode;
};

// The types that do not use planes of 8 pixels.
constexpr Variants kModes[] = {
    {0x62, 0x00, 0x05, TransferMode::planes32}, {0x62, 0x10, 0x14, TransferMode::planes32},
    {0x63, 0x00, 0x04, TransferMode::planes32}, {0x63, 0x20, 0x24, TransferMode::planes32},
    {0x63, 0x30, 0x34, TransferMode::planes32}, {0x63, 0x40, 0x44, TransferMode::planes32},
    {0x63, 0x50, 0x53, TransferMode::planes32}, {0x64, 0x00, 0x05, TransferMode::planes32},
    {0x66, 0x01, 0x06, TransferMode::rgb888},   {0x66, 0x81, 0x81, TransferMode::rgb888},
    {0x66, 0x00, 0x00, TransferMode::rgb565},   {0x66, 0x07, 0x07, TransferMode::rgb565},
    {0x74, 0x01, 0x05, TransferMode::planes32}, {0x74, 0x83, 0x83, TransferMode::planes32},
};

} // namespace

Generation generation_of(std::uint16_t type) {
    const unsigned series = type & 0xFFU;
    if ((series >= 0x50 && series <= 0x55) || series == 0x5E) return Generation::five;
    if (series == 0x58 || (series >= 0x62 && series <= 0x64) || series == 0x66 || series == 0x74)
        return Generation::six;
    return Generation::none;
}

TransferMode transfer_mode_of(std::uint16_t type) {
    const unsigned series = type & 0xFFU;
    const unsigned variant = type >> 8U;
    for (const Variants& row : kModes)
        if (row.series == series && row.first <= variant && variant <= row.last) return row.mode;
    return TransferMode::planes8;
}

} // namespace qm::sim
