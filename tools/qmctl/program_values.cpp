#include "program_values.h"

#include "arguments.h"

#include <chrono>

namespace qm::ctl {
namespace {

std::optional<unsigned> digits(std::string_view text, std::size_t count, unsigned max) {
    return text.size() == count ? to_number(text, 0, max) : std::nullopt;
}

// HH:MM or HH:MM:SS
std::optional<std::array<Ouint8, 3>> to_time(std::string_view text) {
    const auto pieces = split(text, ':');
    if (pieces.size() < 2 || pieces.size() > 3) return std::nullopt;
    std::array<Ouint8, 3> time{};
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto value = digits(pieces[i], 2, i == 0 ? 23 : 59);
        if (!value) return std::nullopt;
        time[i] = static_cast<Ouint8>(*value);
    }
    return time;
}

bool is_day(const Date& date) {
    using namespace std::chrono;
    return year_month_day(year(static_cast<int>(date.year)), month(date.month), day(date.day)).ok();
}

} // namespace

HVprogrampTime_G56 read_period(const std::string& text) {
    const auto pieces = split(text, '-');
    const auto from = pieces.size() == 2 ? to_time(pieces[0]) : std::nullopt;
    const auto to = pieces.size() == 2 ? to_time(pieces[1]) : std::nullopt;
    if (!from || !to) expected("HH:MM-HH:MM or HH:MM:SS-HH:MM:SS, such as 08:00-12:30");
    return {(*from)[0], (*from)[1], (*from)[2], (*to)[0], (*to)[1], (*to)[2]};
}

Date read_date(const std::string& text) {
    const auto pieces = split(text, '-');
    const bool three = pieces.size() == 3;
    const auto year = three ? digits(pieces[0], 4, 9999) : std::nullopt;
    const auto month = three ? digits(pieces[1], 2, 12) : std::nullopt;
    const auto day = three ? digits(pieces[2], 2, 31) : std::nullopt;
    if (!year || !month || !day || !is_day({*year, *month, *day})) expected("a date such as 2024-12-31");
    return {*year, *month, *day};
}

std::array<Ouint8, 3> read_time(const std::string& text) {
    const auto time = to_time(text);
    if (!time) expected("a time of day such as 23:59:59");
    return *time;
}

unsigned bcd(unsigned value) { return value < 10 ? value : bcd(value / 10) << 4U | value % 10; }

std::string to_string(const PixelSize& size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height);
}

std::string beyond(const Rect& rect, const PixelSize& screen) {
    if (unsigned{rect.x} + rect.width <= screen.width && unsigned{rect.y} + rect.height <= screen.height)
        return "";
    return "reaches beyond the screen of " + to_string(screen) + " pixels";
}

unsigned read_type(const std::string& text) {
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    const auto type = to_number(std::string_view(text).substr(hex ? 2 : 0), 0, 0xFFFF, hex ? 16 : 10);
    if (!type) expected("a controller type such as 0x0262");
    return *type;
}

} // namespace qm::ctl
