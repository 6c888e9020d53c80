// The times that a controller goes by, and the record of its clock on the wire.
#pragma once

#include "support/bytes.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace qm::sim {

// Time since the controller was switched on, or since what is played began.
using Milliseconds = std::chrono::milliseconds;

// Civil time of the place where the controller stands, without a time zone.
using LocalSeconds = std::chrono::local_seconds;

// The host's own.
[[nodiscard]] LocalSeconds host_time();

// A moment as people read it.
struct Civil {
    int year = 0, month = 0, day = 0, hour = 0, minute = 0, second = 0;
    int weekday = 0; // from 0 for Sunday
};
[[nodiscard]] Civil civil(LocalSeconds time);

// The 8 bytes of a clock record: year u16 (0x2024), month, day, hour, minute, second, weekday from 0 for
// Sunday, all in BCD.
constexpr std::size_t kClockRecord = 8;
void write_clock(ByteWriter& out, LocalSeconds time);

// Nothing for a record that names no moment of the years 2000 to 2099.
[[nodiscard]] std::optional<LocalSeconds> time_from(Bytes record);

// A moment whose weekday need not be the one of its date.
struct WeekdayTime {
    LocalSeconds time{};
    int weekday = 0;
};
// Takes more than time_from does: any century, 0 for the first month or day, and 7 for Sunday, too.
[[nodiscard]] std::optional<WeekdayTime> weekday_time_from(Bytes record);

// A text such as 2026-12-31 23:59:50, of those years; nothing for any other.
[[nodiscard]] std::optional<LocalSeconds> clock_from(std::string_view text);
[[nodiscard]] std::string clock_text(LocalSeconds time);

// A BCD byte as a number below the limit.
[[nodiscard]] std::optional<std::uint8_t> from_bcd(std::uint8_t byte, int limit);

// The sooner of two moments, either of which may never come.
[[nodiscard]] std::optional<Milliseconds> sooner(std::optional<Milliseconds> one,
                                                 std::optional<Milliseconds> other);

} // namespace qm::sim
