// The search for a controller by every path there is.
#include "qm_sdk_dual/exports.h"

using namespace qm;

namespace {

constexpr int kAttempts = 3;
constexpr Ouint16 kControllerPort = 5005;
// Where a Wi-Fi module stands that cmd_AT_setWifiSsidPwd has set up.
constexpr char kModuleAddress[] = "192.168.100.1";

void set_address(Ping_data& record, const char* ip) {
    std::memset(record.ipAdder, 0, sizeof record.ipAdder);
    std::memcpy(record.ipAdder, ip, std::min(std::strlen(ip), sizeof record.ipAdder - 1));
}

// A ping that was acknowledged without a record tells nothing.
int checked(int code, const Ping_data& found) {
    if (code != QM_OK || found.ControllerType != 0) return code;
    return fail(QM_FAILED, "The answer to the ping does not say what the controller is.");
}

int ping_at(const char* ip, Ping_data& found) {
    const int code = checked(tcp_ping(ip, kControllerPort, found), found);
    if (code == QM_OK) set_address(found, ip);
    return code;
}

// The controller behind the Wi-Fi module that answers the probe.
int by_module(Ping_data& found) {
    Ouint8 ip[20] = {};
    {
        HV_Broadcast probe;
        if (const int code = probe.AT_init(); code != QM_OK) return code;
        if (!probe.answered()) return fail(QM_FAILED, "No Wi-Fi module answered within 3 s.");
        probe.get_ipAdder(ip);
    }
    return ping_at(reinterpret_cast<const char*>(ip), found);
}

int by_fixed_address(Ping_data& found) { return ping_at(kModuleAddress, found); }

int by_broadcast(Ping_data& found) {
    HV_Broadcast broadcast;
    if (const int code = broadcast.init(); code != QM_OK) return code;
    const auto ping = [&](Answer& answer) { return broadcast.hv_cmd_ping(answer); };
    const int code = checked(into_record<1024>(found, ping), found);
    if (code == QM_OK) broadcast.get_ipAdder(found.ipAdder);
    return code;
}

} // namespace

int cmd_searchController(Ping_data* retData) noexcept {
    return guarded({{"retData", retData}}, [&]() -> int {
        std::memset(retData, 0, sizeof *retData);
        int code = QM_FAILED;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            for (const auto path : {by_module, by_fixed_address, by_broadcast}) {
                clear_reason();
                Ping_data found{};
                code = path(found);
                if (code != QM_OK) continue;
                *retData = found;
                return QM_OK;
            }
        }
        return code;
    });
}

int cmd_uart_searchController(Ping_data* retData, const char* uartPort) noexcept {
    return guarded({{"retData", retData}, {"uartPort", uartPort}}, [&] {
        std::memset(retData, 0, sizeof *retData);
        int code = QM_FAILED;
        for (int attempt = 0; attempt < kAttempts; ++attempt) {
            for (const Ouint8 baudRate : {Ouint8{1}, Ouint8{2}}) {
                clear_reason();
                code = on_connection(Serial{uartPort, baudRate}, [&](ON_command& line) {
                    return into_record<1024>(*retData,
                                             [&](Answer& answer) { return line.hv_cmd_ping(answer); });
                });
                if (code == QM_OK) return code;
            }
        }
        return code;
    });
}
