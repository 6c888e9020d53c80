// The controllers that inputs choose from by a byte: every way to pack pixels, for every kind of screen.
#pragma once

#include "simulator/controller/State.h"

namespace qm::fuzz {

inline sim::Model model_of(std::uint8_t choice) {
    constexpr std::uint16_t kTypes[] = {0x0262, 0x0151, 0x0166, 0x0066}; // 5 packs as 0x0151 alone
    const std::uint16_t type = kTypes[choice % 4];
    return {type, {64, 16, {sim::packing_of(type), static_cast<sim::ScreenColor>(1 + choice / 4 % 4)}}};
}

inline sim::LocalSeconds day() { return sim::LocalSeconds(std::chrono::hours(24 * 20000)); }

} // namespace qm::fuzz
