#include "simulator/playback/Clock.h"

#include <ctime>

namespace qm::sim {
namespace {

using namespace std::chrono;

unsigned bcd(unsigned value) { return value / 10 << 4U | value % 10; }

// Date and time of day, calendar and clock at once.
struct Civil {
    explicit Civil(LocalSeconds time)
        : day(floor<days>(time)), date(day), weekday(day), clock(time - local_seconds(day)) {}

    local_days day;
    year_month_day date;
    std::chrono::weekday weekday;
    hh_mm_ss<seconds> clock;
};

} // namespace

LocalSeconds host_time() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const auto date = year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday;
    return local_days(date) + hours(local.tm_hour) + minutes(local.tm_min) + seconds(local.tm_sec);
}

std::optional<std::uint8_t> from_bcd(std::uint8_t byte, unsigned limit) {
    const unsigned tens = byte >> 4U, ones = byte & 0x0FU, value = tens * 10 + ones;
    if (tens > 9 || ones > 9 || value >= limit) return std::nullopt;
    return static_cast<std::uint8_t>(value);
}

std::optional<LocalSeconds> time_from(Bytes record) {
    if (record.size() != kClockRecord || record[1] != 0x20) return std::nullopt;
    const auto in_century = from_bcd(record[0], 100);
    const auto month_number = from_bcd(record[2], 13), day_number = from_bcd(record[3], 32);
    const auto hour = from_bcd(record[4], 24), minute = from_bcd(record[5], 60);
    const auto second = from_bcd(record[6], 60), weekday_number = from_bcd(record[7], 7);
    if (!in_century || !month_number || !day_number || !hour || !minute || !second || !weekday_number)
        return std::nullopt;
    const auto date = year(2000 + *in_century) / month(*month_number) / day(*day_number);
    if (!date.ok()) return std::nullopt;
    return local_days(date) + hours(*hour) + minutes(*minute) + seconds(*second);
}

void write_clock(ByteWriter& out, LocalSeconds time) {
    const Civil civil(time);
    const auto year_number = static_cast<unsigned>(static_cast<int>(civil.date.year()));
    out.u8(bcd(year_number % 100)).u8(bcd(year_number / 100 % 100));
    out.u8(bcd(static_cast<unsigned>(civil.date.month()))).u8(bcd(static_cast<unsigned>(civil.date.day())));
    out.u8(bcd(static_cast<unsigned>(civil.clock.hours().count())));
    out.u8(bcd(static_cast<unsigned>(civil.clock.minutes().count())));
    out.u8(bcd(static_cast<unsigned>(civil.clock.seconds().count())));
    out.u8(civil.weekday.c_encoding());
}

} // namespace qm::sim
