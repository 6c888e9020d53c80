#include "clock_records.h"

#include <algorithm>

namespace qm::ctl {
namespace {

constexpr unsigned kByte = 0xFF;

Ouint8 u8(unsigned value) { return static_cast<Ouint8>(std::min(value, kByte)); }
Ouint16 u16(unsigned value) { return static_cast<Ouint16>(value); }

} // namespace

HVtimeAreaData_G56 time_content(const Area& area) {
    const TextStyle& style = area.style;
    const DigitalClock& clock = *area.digital;
    HVtimeAreaData_G56 content{};
    content.linestyle = style.one_line.value_or(false) ? SINGLELINE : MULTILINE;
    content.color = style.color;
    content.fontName = style.font.c_str();
    // The library makes smaller what does not fit; no font is higher than its area by more than this.
    content.fontSize = u16(style.size.value_or(std::min<unsigned>(area.rect->height, kLargestSize)));
    content.fontBold = style.bold;
    content.fontItalic = style.italic;
    content.fontUnderline = clock.underline;
    content.fontAlign = u8(style.halign);
    content.date_enable = clock.date.has_value();
    content.datestyle = static_cast<DateStyle>(clock.date.value_or(0));
    content.week_enable = clock.week.has_value();
    content.weekstyle = static_cast<WeekStyle>(clock.week.value_or(0));
    content.time_enable = clock.time.has_value();
    content.timestyle = static_cast<TimeStyle>(clock.time.value_or(0));
    return content;
}

HVAnalogClockHeader_G56 clock_hands(const AnalogClock& clock, const Rect& rect) {
    const auto [x, y] = clock.pivot.value_or(std::array<unsigned, 2>{rect.width / 2U, rect.height / 2U});
    const unsigned right = rect.width > x ? rect.width - 1 - x : 0,
                   below = rect.height > y ? rect.height - 1 - y : 0;
    const unsigned radius = std::min({x, y, right, below});
    HVAnalogClockHeader_G56 hands{};
    hands.OrignPointX = u16(x);
    hands.OrignPointY = u16(y);
    hands.HourHandWidth = u8(clock.hour.width.value_or(std::max(1U, radius / 12)));
    hands.HourHandLen = u8(clock.hour.length.value_or(std::max(1U, radius / 2)));
    hands.HourHandColor = clock.hour.color;
    hands.MinHandWidth = u8(clock.minute.width.value_or(std::max(1U, radius / 18)));
    hands.MinHandLen = u8(clock.minute.length.value_or(std::max(1U, radius * 3 / 4)));
    hands.MinHandColor = clock.minute.color;
    hands.SecHandWidth = u8(clock.second.width.value_or(std::max(1U, radius / 60)));
    hands.SecHandLen = u8(clock.second.length.value_or(std::max(1U, radius * 7 / 8)));
    hands.SecHandColor = clock.second.color;
    return hands;
}

} // namespace qm::ctl
