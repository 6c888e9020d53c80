#include "record_text.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>

namespace qm::ctl {
namespace {

// Two or four digits.
std::optional<unsigned> from_bcd(unsigned bcd) {
    unsigned value = 0;
    for (int shift = 12; shift >= 0; shift -= 4) {
        const unsigned digit = (bcd >> shift) & 0xFU;
        if (digit > 9) return std::nullopt;
        value = value * 10 + digit;
    }
    return value;
}

bool is_date(unsigned year, unsigned month, unsigned day) {
    using namespace std::chrono;
    return year_month_day(std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                          std::chrono::day(day))
        .ok();
}

} // namespace

std::string printable(Octets bytes) {
    std::string text(bytes.begin(), std::ranges::find(bytes, 0));
    std::ranges::replace_if(
        text, [](char c) { return c < ' ' || c > '~'; }, '?');
    return text;
}

std::string hex(unsigned value, int digits) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%0*X", digits, value);
    return text.data();
}

std::string hex(Octets bytes, const char* separator) {
    std::string text;
    for (const unsigned char byte : bytes) {
        if (!text.empty()) text.append(separator);
        text.append(hex(byte, 2), 2);
    }
    return text;
}

std::string dotted(Octets address) {
    std::string text;
    for (const unsigned char byte : address) {
        if (!text.empty()) text.push_back('.');
        text.append(std::to_string(byte));
    }
    return text;
}

BcdClock clock_of(const ControllerStatus_G56& status) {
    return {static_cast<Ouint16>(status.RTCYear),
            status.RTCMonth,
            status.RTCDate,
            status.RTCHour,
            status.RTCMinute,
            status.RTCSecond};
}

std::optional<std::string> iso_time(const BcdClock& clock) {
    const auto year = from_bcd(clock.year), month = from_bcd(clock.month), day = from_bcd(clock.day);
    const auto hour = from_bcd(clock.hour), minute = from_bcd(clock.minute), second = from_bcd(clock.second);
    if (!year || !month || !day || !hour || !minute || !second) return std::nullopt;
    if (!is_date(*year, *month, *day) || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    std::array<char, 64> text{};
    std::snprintf(text.data(), text.size(), "%04u-%02u-%02uT%02u:%02u:%02u", *year, *month, *day, *hour,
                  *minute, *second);
    return text.data();
}

} // namespace qm::ctl
