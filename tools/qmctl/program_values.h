// Values of a program's description. Readers throw std::invalid_argument as those of arguments do.
#pragma once

#include "qm_sdk_dual.h"

#include <array>
#include <string>

namespace qm::ctl {

struct Rect;

struct PixelSize {
    unsigned width = 0, height = 0;
};
[[nodiscard]] std::string to_string(const PixelSize& size); // 128 x 32
// What is wrong with a rectangle that is not wholly on the screen; empty when it is.
[[nodiscard]] std::string beyond(const Rect& rect, const PixelSize& screen);

struct Date {
    unsigned year, month, day;
};

[[nodiscard]] HVprogrampTime_G56 read_period(const std::string& text);  // HH:MM[:SS]-HH:MM[:SS]
[[nodiscard]] Date read_date(const std::string& text);                  // YYYY-MM-DD
[[nodiscard]] std::array<Ouint8, 3> read_time(const std::string& text); // HH:MM[:SS]
[[nodiscard]] unsigned bcd(unsigned value); // as controllers keep days: 12 as 0x12, 2024 as 0x2024
[[nodiscard]] unsigned read_type(const std::string& text); // of a controller: 0x0262, or in decimal

} // namespace qm::ctl
