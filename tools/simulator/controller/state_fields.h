// The fields of a controller's state and their names, for whatever goes through them all.
#pragma once

#include "simulator/controller/ControllerState.h"

#include <concepts>

namespace qm::sim {

// A record, constant or not.
template <class T, class Record>
concept Is = std::same_as<std::remove_const_t<T>, Record>;

template <Is<OnOffTime> Record, class Visit> void visit_fields(Record& time, Visit& visit) {
    visit("on_hour", time.on_hour);
    visit("on_minute", time.on_minute);
    visit("off_hour", time.off_hour);
    visit("off_minute", time.off_minute);
}

template <Is<BrightnessSetting> Record, class Visit> void visit_fields(Record& setting, Visit& visit) {
    visit("mode", setting.mode);
    visit("levels", setting.levels);
}

template <Is<Lock> Record, class Visit> void visit_fields(Record& lock, Visit& visit) {
    visit("locked", lock.locked);
    visit("nonvolatile", lock.nonvolatile);
}

template <Is<ProgramLock> Record, class Visit> void visit_fields(Record& lock, Visit& visit) {
    visit("locked", lock.locked);
    visit("nonvolatile", lock.nonvolatile);
    visit("program", lock.program);
    visit("duration", lock.duration);
}

template <Is<Network> Record, class Visit> void visit_fields(Record& network, Visit& visit) {
    visit("mode", network.mode);
    visit("ip", network.ip);
    visit("subnet_mask", network.subnet_mask);
    visit("gateway", network.gateway);
    visit("port", network.port);
    visit("server_mode", network.server_mode);
    visit("server_ip", network.server_ip);
    visit("server_port", network.server_port);
    visit("heartbeat", network.heartbeat);
    visit("mac", network.mac);
    visit("password", network.password);
    visit("net_id", network.net_id);
}

template <Is<WifiSetting> Record, class Visit> void visit_fields(Record& wifi, Visit& visit) {
    visit("ssid", wifi.ssid);
    visit("password", wifi.password);
    visit("address", wifi.address);
    visit("socket", wifi.socket);
    visit("mode", wifi.mode);
    visit("restarts", wifi.restarts);
}

template <Is<ControllerState> Record, class Visit> void visit_fields(Record& state, Visit& visit) {
    visit("clock_offset", state.clock_offset);
    visit("switched_on", state.switched_on);
    visit("timing", state.timing);
    visit("brightness", state.brightness);
    visit("screen_lock", state.screen_lock);
    visit("program_lock", state.program_lock);
    visit("controller_password", state.password);
    visit("address", state.address);
    visit("power_on_delay", state.power_on_delay);
    visit("button_mode", state.button_mode);
    visit("display_mode", state.display_mode);
    visit("speed", state.speed);
    visit("timing_reset", state.timing_reset);
    visit("firmware", state.firmware);
    visit("name", state.name);
    visit("location", state.location);
    visit("network", state.network);
    visit("wifi", state.wifi);
    visit("resets", state.resets);
}

} // namespace qm::sim
