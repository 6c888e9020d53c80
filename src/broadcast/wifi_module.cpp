#include "broadcast/wifi_module.h"

#include "support/message.h"
#include "support/reason.h"

#include <chrono>
#include <string_view>
#include <thread>

namespace qm {
namespace {

constexpr std::chrono::milliseconds kPauseAfterCommand{100};
constexpr std::size_t kAnswerBuffer = 512;
constexpr Ouint16 kShortestAnswer = 38;

// One setting, and the time that a module which has taken it needs for it.
int set(ON_command& module, const std::string& text) {
    if (text.size() > 0xFFFF) return fail(QM_FAILED, "Arguments ssid and pwd are too long.");
    const int code = module.send_AT_cmd(text.c_str(), static_cast<Ouint16>(text.size()));
    if (code == QM_OK) std::this_thread::sleep_for(kPauseAfterCommand); // usleep would end at a signal
    return code;
}

} // namespace

int configure_wifi(ON_command& module, const std::string& ssid, const std::string& pwd) {
    // "4" and "11" are the module's own settings. The address and port are those that cmd_searchController
    // tries.
    const std::string settings[] = {
        "AT+AP=" + ssid + ",4," + pwd + ",11",
        "AT+AP_IP=192.168.100.1",
        "AT+SOCKET=TCPS,0.0.0.0,0,5005",
        "AT+WMODE=2",
    };
    for (const std::string& setting : settings)
        if (const int code = set(module, setting); code != QM_OK) return code;
    (void)set(module, "AT+RST"); // a module that restarts need not answer
    return QM_OK;
}

int ask_wifi_settings(ON_command& module, char* ssid, char* pwd) {
    constexpr char kInquiry[] = "AT+INQUIRY";
    Ouint8 buffer[kAnswerBuffer];
    Ouint16 length = sizeof kInquiry - 1;
    if (const int code = module.send_AT_cmdRetData(kInquiry, length, buffer); code != QM_OK) {
        say("cmd_AT_getWifiSsidPwd return data err\n");
        return code;
    }
    if (length < kShortestAnswer)
        return fail(2, "The Wi-Fi module's answer of %d bytes is too short for its settings.", length);
    const std::string_view answer(reinterpret_cast<const char*>(buffer), length);
    const std::size_t first = answer.find(',');
    if (first == answer.npos) return QM_OK;
    answer.copy(ssid, first);
    const std::size_t second = answer.find(',', first + 1);
    if (second != answer.npos) answer.copy(pwd, second - first - 1, first + 1);
    return QM_OK;
}

} // namespace qm
