// What the screen is seen by: power, timer and brightness. Group 0xA2.
#include "simulator/controller/commands.h"

#include "cmdPacket/catalogue.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr std::size_t kPeriod = 4, kMostPeriods = 255;

Outcome switch_screen(State& state, Bytes payload, Now) {
    if (payload[0] > 1) return refuse(ErrorValue::bad_value);
    state.settings.switched_on = payload[0] == 1;
    return {Ack{}, state.settings.switched_on ? "on" : "off", true};
}

// Hour and minute of switching on, then of switching off, in BCD.
std::optional<OnOffTime> period_from(Bytes bytes) {
    const auto on_hour = from_bcd(bytes[0], 24), on_minute = from_bcd(bytes[1], 60);
    const auto off_hour = from_bcd(bytes[2], 24), off_minute = from_bcd(bytes[3], 60);
    if (!on_hour || !on_minute || !off_hour || !off_minute) return std::nullopt;
    return OnOffTime{*on_hour, *on_minute, *off_hour, *off_minute};
}

Outcome set_timer(State& state, Bytes payload, Now) {
    if (payload.size() != 1 + kPeriod * payload[0]) return refuse(ErrorValue::malformed);
    std::vector<OnOffTime> periods;
    for (std::size_t at = 1; at < payload.size(); at += kPeriod) {
        const auto period = period_from(payload.subspan(at, kPeriod));
        if (!period) return refuse(ErrorValue::bad_value);
        periods.push_back(*period);
    }
    state.settings.timing = std::move(periods);
    return {Ack{}, std::to_string(payload[0]) + " periods", true};
}

Outcome cancel_timer(State& state, Bytes, Now) {
    state.settings.timing.clear();
    return {Ack{}, {}, true};
}

std::string words_of(const BrightnessSetting& setting) {
    if (setting.mode == BrightnessMode::by_sensor) return "by the sensor";
    if (setting.mode == BrightnessMode::manual) return "level " + std::to_string(setting.levels[0]);
    const auto [least, most] = std::ranges::minmax(setting.levels);
    return "by the clock, levels " + std::to_string(least) + " to " + std::to_string(most);
}

Outcome set_brightness(State& state, Bytes payload, Now) {
    BrightnessSetting setting;
    if (payload[0] > static_cast<std::uint8_t>(BrightnessMode::by_sensor))
        return refuse(ErrorValue::bad_value);
    setting.mode = static_cast<BrightnessMode>(payload[0]);
    const Bytes levels = payload.subspan(1);
    if (std::any_of(levels.begin(), levels.end(), [](std::uint8_t level) { return level > kBrightest; }))
        return refuse(ErrorValue::bad_value);
    std::copy(levels.begin(), levels.end(), setting.levels.begin());
    state.settings.brightness = setting;
    return {Ack{}, words_of(setting), true};
}

// u32, in the units of the brightness levels.
Outcome sensor_brightness(State&, Bytes, Now) {
    return answer([](ByteWriter& out) { out.u32(kBrightest); });
}

constexpr Command kPowerCommands[] = {
    {kConfigurationGroup, hv_conf_SwitchOnOffScreen, "screen on/off", 1, 1, switch_screen},
    {kConfigurationGroup, hv_conf_ScreenTimingOnOff, "timer", 1, 1 + kPeriod* kMostPeriods, set_timer},
    {kConfigurationGroup, hv_conf_ModifyBrightness, "brightness", 1 + kHalfHours, 1 + kHalfHours,
     set_brightness},
    {kConfigurationGroup, hv_conf_CancelScreenTimingOnOff, "cancel timer", 0, 0, cancel_timer},
    {kConfigurationGroup, hv_conf_GetBrightnessValue, "sensor brightness", 0, 0, sensor_brightness},
};

} // namespace

std::span<const Command> power_commands() { return kPowerCommands; }

} // namespace qm::sim
