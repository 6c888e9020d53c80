// The fields of a controller's state and their names, for whatever goes through them all.
#pragma once

#include "simulator/controller/ControllerState.h"

#include <concepts>

namespace qm::sim {

// A record, constant or not.
template <class T, class Record>
concept Is = std::same_as<std::remove_const_t<T>, Record>;

template <Is<OnOffTime> Record, class Visit> void visit_fields(Record& time, Visit& visit) {
    visit("on_hour", time.on_hour, "on_minute", time.on_minute, "off_hour", time.off_hour, "off_minute",
          time.off_minute);
}

template <Is<BrightnessSetting> Record, class Visit> void visit_fields(Record& setting, Visit& visit) {
    visit("mode", setting.mode, "levels", setting.levels);
}

template <Is<Lock> Record, class Visit> void visit_fields(Record& lock, Visit& visit) {
    visit("locked", lock.locked, "nonvolatile", lock.nonvolatile);
}

template <Is<ProgramLock> Record, class Visit> void visit_fields(Record& lock, Visit& visit) {
    visit("locked", lock.locked, "nonvolatile", lock.nonvolatile, "program", lock.program, "duration",
          lock.duration);
}

template <Is<Network> Record, class Visit> void visit_fields(Record& network, Visit& visit) {
    visit("mode", network.mode, "ip", network.ip, "subnet_mask", network.subnet_mask, "gateway",
          network.gateway, "port", network.port, "server_mode", network.server_mode, "server_ip",
          network.server_ip, "server_port", network.server_port, "heartbeat", network.heartbeat, "mac",
          network.mac, "password", network.password, "net_id", network.net_id);
}

template <Is<WifiSetting> Record, class Visit> void visit_fields(Record& wifi, Visit& visit) {
    visit("ssid", wifi.ssid, "password", wifi.password, "address", wifi.address, "socket", wifi.socket,
          "mode", wifi.mode, "restarts", wifi.restarts);
}

template <Is<ControllerState> Record, class Visit> void visit_fields(Record& state, Visit& visit) {
    visit("clock_offset", state.clock_offset, "switched_on", state.switched_on, "timing", state.timing,
          "brightness", state.brightness, "screen_lock", state.screen_lock, "program_lock",
          state.program_lock, "controller_password", state.password, "address", state.address,
          "power_on_delay", state.power_on_delay, "button_mode", state.button_mode, "display_mode",
          state.display_mode, "speed", state.speed, "timing_reset", state.timing_reset, "firmware",
          state.firmware, "name", state.name, "location", state.location, "network", state.network, "wifi",
          state.wifi, "resets", state.resets);
}

} // namespace qm::sim
