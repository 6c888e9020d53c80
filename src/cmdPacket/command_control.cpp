// Configuration and control commands.
#include "cmdPacket/command.h"

#include "support/local_time.h"

namespace qm {
namespace {

constexpr std::size_t kPasswordSize = 6;

Bytes record_bytes(const void* record, std::size_t size) {
    return {static_cast<const Ouint8*>(record), size};
}

} // namespace

int ON_command::hv_cmd_sys_reset() { return send_control(hv_conf_SystemReset, {}); }

int ON_command::hv_cmd_check_time() { return set_clock(local_time()); }

int ON_command::set_clock(const std::tm& time) {
    Ouint8 clock[8];
    put_time(time, clock);
    return send_control(hv_conf_SytemClockCorrect, clock);
}

int ON_command::hv_cmd_firmwareActivate(const char* firmwareName) {
    return send_control(hv_conf_FirmwareActivate, record_bytes(firmwareName, kFileNameSize));
}

int ON_command::hv_cmd_coerce_OnOff(Ouint8 onOff) {
    return send_control(hv_conf_SwitchOnOffScreen, record_bytes(&onOff, 1));
}

int ON_command::hv_cmd_timing_onOff(Ouint8 groupNum, const Ouint8* data) {
    ByteBuffer payload{groupNum};
    for (std::size_t i = 0; i < 4U * groupNum; ++i) payload.push_back(charToBcd(data[i]));
    return send_control(hv_conf_ScreenTimingOnOff, payload);
}

int ON_command::hv_cmd_cancel_timingOnOff() { return send_control(hv_conf_CancelScreenTimingOnOff, {}); }

int ON_command::hv_cmd_set_brightness(const Brightness& brightness) {
    return send_control(hv_conf_ModifyBrightness, record_bytes(&brightness, sizeof brightness));
}

int ON_command::hv_cmd_read_controllerID(Ouint8* controllerID) {
    Answer answer{{controllerID, 8}};
    return send_recv_cmd(hv_GRP_CONF, hv_conf_ReadControllerID, {}, answer);
}

int ON_command::hv_cmd_screen_lock(Ouint8 nonvolatile, Ouint8 lock) {
    const Ouint8 payload[] = {nonvolatile, lock};
    return send_control(hv_conf_ScreenLock, payload);
}

int ON_command::program_lock(Ouint8 nonvolatile, Ouint8 lock, const char* name, Ouint32 lockDuration,
                             bool reserved) {
    ByteBuffer payload;
    ByteWriter out(payload);
    out.u8(nonvolatile).u8(lock).text(name, kFileNameSize).zeros(reserved ? 1 : 0).u32(lockDuration);
    return send_control(hv_conf_ProgramLock, payload);
}

int ON_command::hv_cmd_program_lock(Ouint8 nonvolatile, Ouint8 lock, const char* name, Ouint32 lockDuration) {
    return program_lock(nonvolatile, lock, name, lockDuration, false);
}

int ON_command::hv_cmd_program_lock_6G(Ouint8 nonvolatile, Ouint8 lock, const char* name,
                                       Ouint32 lockDuration) {
    return program_lock(nonvolatile, lock, name, lockDuration, true);
}

int ON_command::hv_cmd_check_controllerStatus(Answer& controllerStatus) {
    return send_recv_cmd(hv_GRP_CONF, hv_conf_CheckControllerStatus_G56, {}, controllerStatus);
}

int ON_command::hv_cmd_set_password(const char* oldPassword, const char* newPassword) {
    ByteBuffer payload;
    ByteWriter(payload).text(oldPassword, kPasswordSize).text(newPassword, kPasswordSize);
    return send_control(hv_conf_SetPassword, payload);
}

int ON_command::hv_cmd_delete_password(const char* password) {
    return send_control(hv_conf_deletePassword, record_bytes(password, kPasswordSize));
}

int ON_command::hv_cmd_set_delayTime(std::int16_t delayTime) {
    return send_control(hv_conf_SetDelayTime, record_bytes(&delayTime, sizeof delayTime));
}

int ON_command::hv_cmd_set_btnFunc(Ouint8 btnMode) {
    const Ouint8 payload[6] = {btnMode};
    return send_control(hv_conf_SetBtnFunc, payload);
}

int ON_command::hv_cmd_set_timingReset(const TimingReset& cmdData) {
    return send_control(hv_conf_SetRstFunc, record_bytes(&cmdData, sizeof cmdData));
}

int ON_command::hv_cmd_set_dispMode(Ouint8 dispMode) {
    const Ouint8 payload[6] = {dispMode};
    return send_control(hv_conf_SetDispMode, payload);
}

// The answer's year stays in BCD; every byte behind it becomes plain.
int ON_command::hv_cmd_battie_time(Ouint8 mode, BattleTime& battieData) {
    Ouint8 buffer[20];
    Answer answer{buffer};
    const int code = send_recv_cmd(hv_GRP_CONF, hv_conf_GetBattleTime, record_bytes(&mode, 1), answer);
    const auto received = static_cast<std::size_t>(answer.length);
    for (std::size_t i = 2; i < received; ++i) buffer[i] = bcdTochar(buffer[i]);
    std::memcpy(&battieData, buffer, std::min(received, sizeof battieData));
    return code;
}

int ON_command::hv_cmd_get_stopwatch(Ouint8 mode) {
    Answer none;
    return send_recv_cmd(hv_GRP_CONF, hv_conf_GetStopwatch, record_bytes(&mode, 1), none);
}

int ON_command::hv_cmd_get_sensorBrightnessValue() {
    Answer none;
    return send_recv_cmd(hv_GRP_CONF, hv_conf_GetBrightnessValue, {}, none);
}

int ON_command::hv_cmd_set_speedAdjust(std::int16_t speed) {
    return send_control(hv_conf_SpeedAdjust, record_bytes(&speed, sizeof speed));
}

int ON_command::hv_cmd_set_screenAddress(std::int16_t address) {
    return send_control(hv_conf_ScreenAddress, record_bytes(&address, sizeof address));
}

} // namespace qm
