#include "PlayTimes.h"

namespace qm::sign {
namespace {

constexpr std::size_t kMostPeriods = 8; // of the record

std::array<Date, 2> read_life_span(const Field& field) {
    std::array<Date, 2> span{};
    read_object(field, [&](Object& object) {
        span = {object.require("from").read(read_date), object.require("to").read(read_date)};
    });
    const auto order = [](const Date& d) { return std::array{d.year, d.month, d.day}; };
    if (order(span[1]) < order(span[0])) field.refuse("ends before it begins");
    return span;
}

std::vector<PlayRules::Period> read_periods(const Field& field) {
    std::vector<PlayRules::Period> periods;
    for (const Field& period : field.list(1, kMostPeriods)) periods.push_back(period.read(read_period));
    return periods;
}

} // namespace

void PlayTimes::replace(PlayRules& rules) const {
    if (week) rules.week = *week;
    if (life_span) rules.life_span = life_span;
    if (!periods.empty()) rules.periods = periods;
}

PlayTimes read_play_times(Object& object) {
    PlayTimes times;
    object.take_number("week", times.week);
    object.take("life_span", times.life_span, read_life_span);
    object.take("play_periods", times.periods, read_periods);
    return times;
}

} // namespace qm::sign
