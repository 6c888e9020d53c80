#include "simulator/playback/Clock.h"

#include <algorithm>
#include <cstdio>
#include <ctime>

namespace qm::sim {

using namespace std::chrono;

LocalSeconds host_time() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    localtime_r(&now, &local);
    const auto date = year(local.tm_year + 1900) / (local.tm_mon + 1) / local.tm_mday;
    return local_days(date) + hours(local.tm_hour) + minutes(local.tm_min) + seconds(local.tm_sec);
}

Civil civil(LocalSeconds time) {
    const auto day = floor<days>(time);
    const year_month_day date(day);
    const auto seconds_of_day = static_cast<int>((time - day).count());
    return {static_cast<int>(date.year()),
            static_cast<int>(static_cast<unsigned>(date.month())),
            static_cast<int>(static_cast<unsigned>(date.day())),
            seconds_of_day / 3600,
            seconds_of_day / 60 % 60,
            seconds_of_day % 60,
            static_cast<int>(weekday(day).c_encoding())};
}

void write_clock(ByteWriter& out, LocalSeconds time) {
    const Civil now = civil(time);
    for (const int value : {now.year % 100, now.year / 100 % 100, now.month, now.day, now.hour, now.minute,
                            now.second, now.weekday})
        out.u8(static_cast<unsigned>(value / 10 * 16 + value % 10));
}

std::optional<std::uint8_t> from_bcd(std::uint8_t byte, int limit) {
    const int tens = byte / 16, ones = byte % 16, value = tens * 10 + ones;
    if (tens > 9 || ones > 9 || value >= limit) return std::nullopt;
    return static_cast<std::uint8_t>(value);
}

std::optional<LocalSeconds> time_from(Bytes record) {
    if (record.size() != kClockRecord || record[1] != 0x20 || record[2] == 0 || record[3] == 0 ||
        record[7] > 6)
        return std::nullopt;
    const auto read = weekday_time_from(record);
    return read ? std::optional(read->time) : std::nullopt;
}

std::optional<WeekdayTime> weekday_time_from(Bytes record) {
    constexpr int kLimits[kClockRecord] = {100, 100, 13, 32, 24, 60, 60, 8};
    int fields[kClockRecord];
    for (std::size_t i = 0; i < kClockRecord; ++i) {
        const auto value = from_bcd(record[i], kLimits[i]);
        if (!value) return std::nullopt;
        fields[i] = *value;
    }
    const auto date = year(fields[1] * 100 + fields[0]) / std::max(1, fields[2]) / std::max(1, fields[3]);
    if (!date.ok()) return std::nullopt;
    return WeekdayTime{local_days(date) + hours(fields[4]) + minutes(fields[5]) + seconds(fields[6]),
                       fields[7] % 7};
}

std::optional<LocalSeconds> clock_from(std::string_view text) {
    constexpr std::string_view kForm = "0000-00-00 00:00:00";
    if (text.size() != kForm.size()) return std::nullopt;
    for (std::size_t i = 0; i < kForm.size(); ++i)
        if (kForm[i] == '0' ? text[i] < '0' || text[i] > '9' : text[i] != kForm[i]) return std::nullopt;
    ByteBuffer record;
    for (const std::size_t i : {2, 0, 5, 8, 11, 14, 17})
        record.push_back(static_cast<std::uint8_t>((text[i] - '0') * 16 + text[i + 1] - '0'));
    record.push_back(0);
    return time_from(record);
}

std::string clock_text(LocalSeconds time) {
    const Civil at = civil(time);
    char text[80];
    std::snprintf(text, sizeof text, "%04d-%02d-%02d %02d:%02d:%02d", at.year, at.month, at.day, at.hour,
                  at.minute, at.second);
    return text;
}

std::optional<Milliseconds> sooner(std::optional<Milliseconds> one, std::optional<Milliseconds> other) {
    return one && (!other || *one < *other) ? one : other;
}

} // namespace qm::sim
