#include "simulator/controller/ControllerState.h"

#include <algorithm>

namespace qm::sim {
namespace {

using std::chrono::minutes;

int minute_of_day(LocalSeconds clock) {
    const auto day = std::chrono::floor<std::chrono::days>(clock);
    return static_cast<int>(std::chrono::duration_cast<minutes>(clock - day).count());
}

bool covers(const OnOffTime& time, int minute) {
    const int on = time.on_hour * 60 + time.on_minute, off = time.off_hour * 60 + time.off_minute;
    return on <= off ? on <= minute && minute < off : minute >= on || minute < off;
}

} // namespace

ControllerState after_restart(ControllerState state) {
    state.switched_on = true;
    if (!state.screen_lock.nonvolatile) state.screen_lock = {};
    if (!state.program_lock.nonvolatile) state.program_lock = {};
    return state;
}

bool power_at(const ControllerState& state, LocalSeconds clock) {
    if (!state.switched_on || state.timing.empty()) return state.switched_on;
    const int minute = minute_of_day(clock);
    return std::any_of(state.timing.begin(), state.timing.end(),
                       [&](const OnOffTime& time) { return covers(time, minute); });
}

// There is full daylight on the sensor.
unsigned brightness_at(const ControllerState& state, LocalSeconds clock) {
    const BrightnessSetting& setting = state.brightness;
    if (setting.mode == BrightnessMode::by_sensor) return kBrightest;
    const int half_hour = setting.mode == BrightnessMode::by_clock ? minute_of_day(clock) / 30 : 0;
    return std::min<unsigned>(setting.levels[static_cast<std::size_t>(half_hour)], kBrightest);
}

} // namespace qm::sim
