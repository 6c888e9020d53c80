// Configuration and control, group 0xA2, but for the screen's light.
#include "simulator/controller/commands.h"

#include "cmdPacket/catalogue.h"
#include "simulator/controller/records.h"

namespace qm::sim {
namespace {

constexpr std::size_t kPassword = 6, kTimingReset = 11, kProgramLock5 = 10, kProgramLock6 = 11;
constexpr std::size_t kModeAndReserved = 6;

Outcome ping(State& state, Bytes, Now now) {
    return answer([&](ByteWriter& out) { write_ping(out, state, now); });
}

Outcome read_id(State&, Bytes, Now) {
    return answer([](ByteWriter& out) { out.text("QMSIM001", 8); });
}

Outcome status(State& state, Bytes, Now now) {
    return answer([&](ByteWriter& out) { write_status(out, state, now); });
}

// Files and settings stay; what was kept in working memory is gone.
Outcome reset(State& state, Bytes, Now now) {
    state.settings = after_restart(std::move(state.settings));
    ++state.settings.resets;
    state.program_locked_since = now.up;
    state.files.end_transfer();
    state.listing = {};
    state.stopwatch = {};
    state.areas.clear();
    state.voices.restart();
    ++state.dynamic_version;
    state.programs.restart(now.up);
    if (state.settings.screen_lock.locked)
        state.held = dark_screen(state.model);
    else
        state.held.reset();
    return {Ack{}, {}, true};
}

Outcome correct_clock(State& state, Bytes payload, Now now) {
    const auto time = time_from(payload);
    if (!time) return refuse(ErrorValue::bad_value);
    state.settings.clock_offset = *time - now.host;
    return {Ack{}, clock_text(*time)};
}

Outcome activate_firmware(State& state, Bytes payload, Now) {
    const std::string name = text_of(payload);
    if (!state.files.find(FileFamily::ordinary, name)) return refuse(ErrorValue::no_such_file);
    state.settings.firmware = name;
    return done();
}

// A locked screen goes on showing what it shows.
Outcome lock_screen(State& state, Bytes payload, Now now) {
    if (payload[0] > 1 || payload[1] > 1) return refuse(ErrorValue::bad_value);
    const bool lock = payload[1] == 1;
    if (!lock)
        state.held.reset();
    else if (!state.held)
        state.held = HeldScreen{played(state, now), playing_program(state, now)};
    state.settings.screen_lock = lock ? Lock{true, payload[0] == 1} : Lock{};
    return {Ack{}, lock ? "locked" : "unlocked", true};
}

// nonvolatile, lock, name 4, in the form of generation 6 a reserved byte, lockDuration u32. Generation 6
// takes the other form, too: hosts send no other over TCP.
Outcome lock_program(State& state, Bytes payload, Now now) {
    if (payload.size() == kProgramLock6 && generation_of(state.model.type) == Generation::five)
        return refuse(ErrorValue::other_generation);
    if (payload[0] > 1 || payload[1] > 1) return refuse(ErrorValue::bad_value);
    ByteReader reader(payload.subspan(2));
    ProgramLock lock;
    lock.locked = payload[1] == 1;
    lock.nonvolatile = payload[0] == 1;
    lock.program = text_of(reader.bytes(FileSystem::kNameSize));
    reader.skip(payload.size() - kProgramLock5);
    lock.duration = reader.u32();
    state.settings.program_lock = lock.locked ? lock : ProgramLock{};
    state.program_locked_since = now.up;
    return {Ack{}, lock.locked ? "locked" : "unlocked", true};
}

bool is_password(const State& state, Bytes given) {
    return state.settings.password.empty() || state.settings.password == text_of(given);
}

Outcome set_password(State& state, Bytes payload, Now) {
    if (!is_password(state, payload.first(kPassword))) return refuse(ErrorValue::wrong_password);
    state.settings.password = text_of(payload.subspan(kPassword));
    return done();
}

Outcome delete_password(State& state, Bytes payload, Now) {
    if (!is_password(state, payload)) return refuse(ErrorValue::wrong_password);
    state.settings.password.clear();
    return done();
}

// Settings that are kept as they come.
template <auto setting> Outcome set_byte(State& state, Bytes payload, Now) {
    state.settings.*setting = payload[0];
    return done();
}

template <auto setting> Outcome set_number(State& state, Bytes payload, Now) {
    const std::uint16_t value = ByteReader(payload).u16();
    if (value > INT16_MAX) return refuse(ErrorValue::bad_value);
    state.settings.*setting = value;
    return done();
}

Outcome set_timing_reset(State& state, Bytes payload, Now) {
    std::copy(payload.begin(), payload.end(), state.settings.timing_reset.begin());
    return done();
}

Outcome battle_time(State& state, Bytes, Now now) {
    return answer([&](ByteWriter& out) { write_clock(out, clock_of(state, now)); });
}

// Mode 0 reads, 1 starts, 2 stops, 3 sets to zero; each answers with milliseconds, u32.
Outcome stopwatch(State& state, Bytes payload, Now now) {
    enum : std::uint8_t { kRead, kStart, kStop, kZero };
    Stopwatch& watch = state.stopwatch;
    if (payload[0] > kZero) return refuse(ErrorValue::bad_value);
    if (payload[0] != kRead) {
        watch.counted = payload[0] == kZero ? Milliseconds{0} : watch.at(now.up);
        watch.since = now.up;
    }
    if (payload[0] == kStart) watch.running = true;
    if (payload[0] == kStop) watch.running = false;
    return answer([&](ByteWriter& out) { out.u32(static_cast<std::uint32_t>(watch.at(now.up).count())); });
}

Outcome set_speed(State& state, Bytes payload, Now) {
    state.settings.speed = static_cast<std::int16_t>(ByteReader(payload).u16());
    return done();
}

constexpr Command kControlCommands[] = {
    {kConfigurationGroup, hv_conf_Ping, "ping", 0, 0, ping},
    {kConfigurationGroup, hv_conf_SystemReset, "reset", 0, 0, reset},
    {kConfigurationGroup, hv_conf_SytemClockCorrect, "clock", kClockRecord, kClockRecord, correct_clock},
    {kConfigurationGroup, hv_conf_FirmwareActivate, "firmware", FileSystem::kNameSize, FileSystem::kNameSize,
     activate_firmware},
    {kConfigurationGroup, hv_conf_ReadControllerID, "controller ID", 0, 0, read_id},
    {kConfigurationGroup, hv_conf_ScreenLock, "screen lock", 2, 2, lock_screen},
    {kConfigurationGroup, hv_conf_ProgramLock, "program lock", kProgramLock5, kProgramLock6, lock_program},
    {kConfigurationGroup, hv_conf_CheckControllerStatus_G56, "status", 0, 0, status},
    {kConfigurationGroup, hv_conf_SetPassword, "set password", 2 * kPassword, 2 * kPassword, set_password},
    {kConfigurationGroup, hv_conf_deletePassword, "delete password", kPassword, kPassword, delete_password},
    {kConfigurationGroup, hv_conf_SetDelayTime, "power-on delay", 2, 2,
     set_number<&ControllerState::power_on_delay>},
    {kConfigurationGroup, hv_conf_SetBtnFunc, "button", kModeAndReserved, kModeAndReserved,
     set_byte<&ControllerState::button_mode>},
    {kConfigurationGroup, hv_conf_SetRstFunc, "timing reset", kTimingReset, kTimingReset, set_timing_reset},
    {kConfigurationGroup, hv_conf_SetDispMode, "display mode", kModeAndReserved, kModeAndReserved,
     set_byte<&ControllerState::display_mode>},
    {kConfigurationGroup, hv_conf_GetBattleTime, "battle time", 1, 1, battle_time},
    {kConfigurationGroup, hv_conf_GetStopwatch, "stopwatch", 1, 1, stopwatch},
    {kConfigurationGroup, hv_conf_SpeedAdjust, "speed", 2, 2, set_speed},
    {kConfigurationGroup, hv_conf_ScreenAddress, "screen address", 2, 2,
     set_number<&ControllerState::address>},
};

} // namespace

std::span<const Command> control_commands() { return kControlCommands; }

} // namespace qm::sim
