#include "time_zone.h"

#include "options/readers.h"

#include <chrono>
#include <glib.h>
#include <memory>

namespace qm::sign {
namespace {

struct Unref {
    void operator()(GTimeZone* zone) const { g_time_zone_unref(zone); }
    void operator()(GDateTime* time) const { g_date_time_unref(time); }
};
using Zone = std::unique_ptr<GTimeZone, Unref>;
using Moment = std::unique_ptr<GDateTime, Unref>;

// Null for one that is not known.
Zone zone_named(const std::string& name) {
    return Zone(name.empty() ? g_time_zone_new_local() : g_time_zone_new_identifier(name.c_str()));
}

long long seconds_of(const Time& time) {
    using namespace std::chrono;
    const auto [y, m, d] = time.date;
    const sys_days date = year(static_cast<int>(y)) / month(m) / day(d);
    return (sys_seconds(date) + hours(time.hour) + minutes(time.minute) + seconds(time.second))
        .time_since_epoch()
        .count();
}

} // namespace

std::string read_time_zone(const std::string& text) {
    if (!zone_named(text)) options::expected("a time zone that this host knows, such as Europe/Lisbon");
    return text;
}

Time time_in(const std::string& zone, int seconds) {
    const Zone there = zone_named(zone);
    const Moment now(there ? g_date_time_new_now(there.get()) : nullptr);
    const Moment then(now ? g_date_time_add_seconds(now.get(), seconds) : nullptr);
    if (!then) throw std::runtime_error("the time in " + zone + " is not known");
    const auto u = [](int value) { return static_cast<unsigned>(value); };
    return {{u(g_date_time_get_year(then.get())), u(g_date_time_get_month(then.get())),
             u(g_date_time_get_day_of_month(then.get()))},
            u(g_date_time_get_hour(then.get())),
            u(g_date_time_get_minute(then.get())),
            u(g_date_time_get_second(then.get()))};
}

long long seconds_between(const Time& from, const Time& to) { return seconds_of(to) - seconds_of(from); }

} // namespace qm::sign
