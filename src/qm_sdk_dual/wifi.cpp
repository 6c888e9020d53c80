// The Wi-Fi module of a controller, set up with AT commands.
#include "broadcast/wifi_module.h"
#include "qm_sdk_dual/exports.h"

using namespace qm;

namespace {

template <class Task> int with_module(const char* ssid, const char* pwd, Task&& task) {
    return guarded({{"ssid", ssid}, {"pwd", pwd}}, [&] {
        HV_Broadcast module;
        const int code = module.AT_init();
        return code == QM_OK ? task(module) : code;
    });
}

} // namespace

int cmd_AT_setWifiSsidPwd(const char* ssid, const char* pwd) noexcept {
    return with_module(ssid, pwd, [&](ON_command& module) { return configure_wifi(module, ssid, pwd); });
}

int cmd_AT_getWifiSsidPwd(char* ssid, char* pwd) noexcept {
    return with_module(ssid, pwd, [&](ON_command& module) { return ask_wifi_settings(module, ssid, pwd); });
}
