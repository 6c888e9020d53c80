#include "Setting.h"

#include "time_zone.h"

#include <cstdlib>

namespace qm::sign {
namespace {

constexpr Name kOffOn[] = {{"off", 0}, {"on", 1}};
constexpr Name kModes[] = {{"manual", 0}, {"by clock", 1}, {"by sensor", 2}};
constexpr int kClockTolerance = 2; // seconds

SettingState compared(bool same) { return same ? SettingState::same : SettingState::differs; }

Setting power_setting(bool on, const ControllerStatus& status) {
    return {"power", word_for(kOffOn, on), word_for(kOffOn, status.power),
            compared(on == (status.power != 0)), [on](const Controller& to) { return to.switch_screen(on); }};
}

// Whether there is a timer is told, but not its periods.
Setting timer_setting(const std::vector<TimerPeriod>& periods, const ControllerStatus& status) {
    const bool on = status.timer != 0, wanted = !periods.empty();
    const bool told = on != wanted || !wanted;
    return {"timer", wanted ? joined(texts_of(periods)) : "off", told ? word_for(kOffOn, on) : "",
            told ? compared(on == wanted) : SettingState::unknown, [periods](const Controller& to) {
                return periods.empty() ? to.cancel_timer() : to.switch_screen(times_of(periods));
            }};
}

// The level is told, but not the table.
Setting brightness_setting(const Brightness& wanted, const ControllerStatus& status) {
    const unsigned mode = wanted.BrightnessMode, level = wanted.HalfHourValue[0];
    const bool manual = mode == 0, same = status.brightness_mode == mode;
    const auto in_words = [&](unsigned in_mode, unsigned at) {
        return in_mode == 0 ? std::to_string(at) : word_for(kModes, in_mode);
    };
    const bool unknown = same && mode == 1;
    return {"brightness", in_words(mode, level),
            unknown ? "" : in_words(status.brightness_mode, status.brightness),
            unknown ? SettingState::unknown : compared(same && (!manual || status.brightness == level)),
            [wanted](const Controller& to) { return to.call(cmd_setBrightness, &wanted); }};
}

std::string in_words(const ClockWish& wish) {
    std::string words = wish.zone.empty() ? "now" : "now in " + wish.zone;
    if (wish.shift != 0)
        words += (wish.shift > 0 ? " and " : " less ") + std::to_string(std::abs(wish.shift)) + " s";
    return words;
}

Setting clock_setting(const ClockWish& wish, const ControllerStatus& status) {
    const auto ahead = status.clock
                           ? std::optional(seconds_between(time_in(wish.zone, wish.shift), *status.clock))
                           : std::nullopt;
    const std::string found = !ahead        ? "not set"
                              : *ahead >= 0 ? std::to_string(*ahead) + " s ahead"
                                            : std::to_string(-*ahead) + " s behind";
    return {"clock", in_words(wish), found, compared(ahead && std::abs(*ahead) <= kClockTolerance),
            [wish](const Controller& to) { return to.set_clock(time_in(wish.zone, wish.shift)); }};
}

} // namespace

bool has_settings(const SignDescription& sign) {
    return sign.power.on || sign.power.timer || sign.brightness || sign.clock;
}

std::vector<Setting> settings_of(const SignDescription& sign, const ControllerStatus& status) {
    std::vector<Setting> settings;
    if (sign.power.on) settings.push_back(power_setting(*sign.power.on, status));
    if (sign.power.timer) settings.push_back(timer_setting(*sign.power.timer, status));
    if (sign.brightness) settings.push_back(brightness_setting(*sign.brightness, status));
    if (sign.clock) settings.push_back(clock_setting(*sign.clock, status));
    return settings;
}

} // namespace qm::sign
