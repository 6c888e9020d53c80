// The times that a controller goes by, and the record of its clock on the wire.
#pragma once

#include "support/bytes.h"

#include <chrono>
#include <optional>

namespace qm::sim {

// Time since the controller was switched on, or since what is played began.
using Time = std::chrono::milliseconds;

// Civil time of the place where the controller stands, without a time zone.
using LocalSeconds = std::chrono::local_seconds;

// The host's own.
[[nodiscard]] LocalSeconds host_time();

// The 8 bytes of a clock record: year u16 (0x2024), month, day, hour, minute, second, weekday from 0 for
// Sunday, all in BCD. Nothing for a record that names no moment of the years 2000 to 2099.
constexpr std::size_t kClockRecord = 8;
[[nodiscard]] std::optional<LocalSeconds> time_from(Bytes record);
void write_clock(ByteWriter& out, LocalSeconds time);

// A BCD byte as a number below the limit.
[[nodiscard]] std::optional<std::uint8_t> from_bcd(std::uint8_t byte, unsigned limit);

} // namespace qm::sim
