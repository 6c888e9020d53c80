#include "TimerPeriod.h"

namespace qm::sign {
namespace {

int begin_of(const OnPeriod& period) { return 60 * period.on_hour + period.on_minute; }
int end_of(const OnPeriod& period) { return 60 * period.off_hour + period.off_minute; }

// Whether a minute of the day is in a period, which may run past midnight.
bool covers(const OnPeriod& period, int minute) {
    const int on = begin_of(period), off = end_of(period);
    return on < off ? on <= minute && minute < off : minute >= on || minute < off;
}

bool overlap(const OnPeriod& a, const OnPeriod& b) {
    return covers(a, begin_of(b)) || covers(b, begin_of(a));
}

} // namespace

TimerPeriod read_timer_period(const std::string& text) {
    const bool two = text.size() == 11 && text[5] == '-'; // HH:MM-HH:MM
    const auto on = two ? to_time(text.substr(0, 5)) : std::nullopt;
    const auto off = two ? to_time(text.substr(6)) : std::nullopt;
    if (!on || !off) expected("the times of switching on and off, such as 07:30-22:00");
    const OnPeriod times{(*on)[0], (*on)[1], (*off)[0], (*off)[1]};
    if (begin_of(times) == end_of(times)) expected("two different times");
    return {times, text};
}

std::string overlap_of(const std::vector<TimerPeriod>& periods) {
    for (auto period = periods.begin(); period != periods.end(); ++period)
        for (auto other = periods.begin(); other != period; ++other)
            if (overlap(period->times, other->times))
                return "expected periods that do not overlap, not '" + other->text + "' and '" +
                       period->text + "'";
    return "";
}

std::vector<OnPeriod> times_of(const std::vector<TimerPeriod>& periods) {
    std::vector<OnPeriod> times;
    for (const TimerPeriod& period : periods) times.push_back(period.times);
    return times;
}

std::vector<std::string> texts_of(const std::vector<TimerPeriod>& periods) {
    std::vector<std::string> texts;
    for (const TimerPeriod& period : periods) texts.push_back(period.text);
    return texts;
}

} // namespace qm::sign
