// Device control: each call is one command on a connection of its own.
#include "qm_sdk_dual/exports.h"

#include <chrono>
#include <optional>

using namespace qm;

namespace {

// Midnight.
std::optional<std::tm> calendar_day(unsigned year, unsigned month, unsigned day) {
    using namespace std::chrono;
    const year_month_day date(std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                              std::chrono::day(day));
    if (!date.ok() || year < 1 || year > 9999) return std::nullopt;
    std::tm time{};
    time.tm_year = static_cast<int>(year) - 1900;
    time.tm_mon = static_cast<int>(month) - 1;
    time.tm_mday = static_cast<int>(day);
    time.tm_wday = static_cast<int>(weekday(sys_days(date)).c_encoding());
    return time;
}

} // namespace

int cmd_sysReset(const char* ip, Ouint16 port) noexcept {
    return run(Tcp{ip, port}, [](ON_command& c) { return c.hv_cmd_sys_reset(); });
}

int cmd_check_time(const char* ip, Ouint16 port) noexcept {
    return run(Tcp{ip, port}, [](ON_command& c) { return c.hv_cmd_check_time(); });
}

int qm_set_clock(const char* ip, Ouint16 port, Ouint16 year, Ouint8 month, Ouint8 day, Ouint8 hour,
                 Ouint8 minute, Ouint8 second) noexcept {
    return guarded([&] {
        auto time = calendar_day(year, month, day);
        if (!time || hour > 23 || minute > 59 || second > 59)
            return fail(QM_FAILED, "That is no time of any day.");
        time->tm_hour = hour;
        time->tm_min = minute;
        time->tm_sec = second;
        return on_connection(Tcp{ip, port}, [&](ON_command& c) { return c.set_clock(*time); });
    });
}

int cmd_coerceOnOff(const char* ip, Ouint16 port, Ouint8 onOff) noexcept {
    return run(Tcp{ip, port}, [&](ON_command& c) { return c.hv_cmd_coerce_OnOff(onOff); });
}

int cmd_timingOnOff(const char* ip, Ouint16 port, Ouint8 groupNum, const Ouint8* data) noexcept {
    return run(Tcp{ip, port}, {{"data", data, groupNum > 0}},
               [&](ON_command& c) { return c.hv_cmd_timing_onOff(groupNum, data); });
}

int cmd_cancelTimingOnOff(const char* ip, Ouint16 port) noexcept {
    return run(Tcp{ip, port}, [](ON_command& c) { return c.hv_cmd_cancel_timingOnOff(); });
}

int cmd_setBrightness(const char* ip, Ouint16 port, const Brightness* brightness) noexcept {
    return run(Tcp{ip, port}, {{"brightness", brightness}},
               [&](ON_command& c) { return c.hv_cmd_set_brightness(*brightness); });
}

int cmd_readControllerID(const char* ip, Ouint16 port, Ouint8* ControllerID) noexcept {
    return run(Tcp{ip, port}, {{"ControllerID", ControllerID}},
               [&](ON_command& c) { return c.hv_cmd_read_controllerID(ControllerID); });
}

int cmd_screenLock(const char* ip, Ouint16 port, Ouint8 nonvolatile, Ouint8 lock) noexcept {
    return run(Tcp{ip, port}, [&](ON_command& c) { return c.hv_cmd_screen_lock(nonvolatile, lock); });
}

int cmd_programLock(const char* ip, Ouint16 port, Ouint8 nonvolatile, Ouint8 lock, const char* name,
                    Ouint32 lockDuration) noexcept {
    return run(Tcp{ip, port}, {{"name", name}},
               [&](ON_command& c) { return c.hv_cmd_program_lock(nonvolatile, lock, name, lockDuration); });
}

int cmd_uart_programLock(const char* uartPort, Ouint8 baudRate, Ouint8 nonvolatile, Ouint8 lock,
                         const char* name, Ouint32 lockDuration) noexcept {
    return run(Serial{uartPort, baudRate}, {{"name", name}},
               [&](ON_command& c) { return c.hv_cmd_program_lock(nonvolatile, lock, name, lockDuration); });
}

int cmd_uart_programLock_6G(const char* uartPort, Ouint8 baudRate, Ouint8 nonvolatile, Ouint8 lock,
                            const char* name, Ouint32 lockDuration) noexcept {
    return run(Serial{uartPort, baudRate}, {{"name", name}}, [&](ON_command& c) {
        return c.hv_cmd_program_lock_6G(nonvolatile, lock, name, lockDuration);
    });
}

int cmd_check_controllerStatus(const char* ip, Ouint16 port,
                               ControllerStatus_G56* controllerStatus) noexcept {
    return run(Tcp{ip, port}, {{"controllerStatus", controllerStatus}}, [&](ON_command& c) {
        return into_record<sizeof *controllerStatus>(
            *controllerStatus, [&](Answer& answer) { return c.hv_cmd_check_controllerStatus(answer); });
    });
}

int cmd_setPassword(const char* ip, Ouint16 port, const char* oldPassword, const char* newPassword) noexcept {
    return run(Tcp{ip, port}, {{"oldPassword", oldPassword}, {"newPassword", newPassword}},
               [&](ON_command& c) { return c.hv_cmd_set_password(oldPassword, newPassword); });
}

int cmd_deletePassword(const char* ip, Ouint16 port, const char* password) noexcept {
    return run(Tcp{ip, port}, {{"password", password}},
               [&](ON_command& c) { return c.hv_cmd_delete_password(password); });
}

int cmd_setDelayTime(const char* ip, Ouint16 port, int16_t delayTime) noexcept {
    return run(Tcp{ip, port}, [&](ON_command& c) { return c.hv_cmd_set_delayTime(delayTime); });
}

int cmd_setBtnFunc(const char* ip, Ouint16 port, Ouint8 btnMode) noexcept {
    return run(Tcp{ip, port}, [&](ON_command& c) { return c.hv_cmd_set_btnFunc(btnMode); });
}

int cmd_setTimingReset(const char* ip, Ouint16 port, const TimingReset* cmdData) noexcept {
    return run(Tcp{ip, port}, {{"cmdData", cmdData}},
               [&](ON_command& c) { return c.hv_cmd_set_timingReset(*cmdData); });
}

int cmd_setDispMode(const char* ip, Ouint16 port, Ouint8 dispMode) noexcept {
    return run(Tcp{ip, port}, [&](ON_command& c) { return c.hv_cmd_set_dispMode(dispMode); });
}

int cmd_battieTime(const char* ip, Ouint16 port, Ouint8 mode, BattleTime* battieData) noexcept {
    return run(Tcp{ip, port}, {{"battieData", battieData}},
               [&](ON_command& c) { return c.hv_cmd_battie_time(mode, *battieData); });
}

int cmd_getStopwatch(const char* ip, Ouint16 port, Ouint8 mode, Ouint32* timeValue) noexcept {
    return run(Tcp{ip, port}, {{"timeValue", timeValue}},
               [&](ON_command& c) { return c.hv_cmd_get_stopwatch(mode); });
}

int cmd_getSensorBrightnessValue(const char* ip, Ouint16 port, Ouint32* brightnessValue) noexcept {
    return run(Tcp{ip, port}, {{"brightnessValue", brightnessValue}},
               [](ON_command& c) { return c.hv_cmd_get_sensorBrightnessValue(); });
}

int cmd_setSpeedAdjust(const char* ip, Ouint16 port, int16_t speed) noexcept {
    return run(Tcp{ip, port}, [&](ON_command& c) { return c.hv_cmd_set_speedAdjust(speed); });
}

int cmd_setScreenAddress(const char* ip, Ouint16 port, int16_t address) noexcept {
    return run(Tcp{ip, port}, [&](ON_command& c) { return c.hv_cmd_set_screenAddress(address); });
}

int cmd_firmwareActivate(const char* ip, Ouint16 port, const char* firmwareFileName) noexcept {
    return run(Tcp{ip, port}, {{"firmwareFileName", firmwareFileName}},
               [&](ON_command& c) { return c.hv_cmd_firmwareActivate(firmwareFileName); });
}

int update_firmware(const char*, Ouint16, const char*) noexcept { return nothing_to_do(); }
