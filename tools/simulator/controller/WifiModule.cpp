#include "simulator/controller/WifiModule.h"

#include <algorithm>

namespace qm::sim {
namespace {

constexpr std::string_view kDone = "+OK", kRefused = "+ERR=-1";
constexpr std::size_t kLongestValue = 64;

bool is_value(std::string_view text) {
    const auto printable = [](char c) { return c > ' ' && c < 0x7F; };
    return !text.empty() && text.size() <= kLongestValue && std::all_of(text.begin(), text.end(), printable);
}

// "SSID,4,PASSWORD,11". Comma is the only character that neither can hold.
bool set_network(WifiSetting& setting, std::string_view text) {
    std::string_view fields[4];
    for (std::string_view& field : fields) {
        const std::size_t comma = std::min(text.find(','), text.size());
        field = text.substr(0, comma);
        text.remove_prefix(std::min(comma + 1, text.size()));
    }
    const auto is_name = [](std::string_view field) {
        return !field.empty() && field.size() <= kLongestValue;
    };
    if (!text.empty() || !is_name(fields[0]) || !is_name(fields[2]) || fields[3].empty()) return false;
    setting.ssid = fields[0];
    setting.password = fields[2];
    return true;
}

struct Setting {
    std::string_view command;
    std::string WifiSetting::*value;
};
constexpr Setting kSettings[] = {
    {"AT+AP_IP=", &WifiSetting::address},
    {"AT+SOCKET=", &WifiSetting::socket},
    {"AT+WMODE=", &WifiSetting::mode},
};

// At least 38 bytes, whatever the setting.
std::string inquiry(const WifiSetting& setting) {
    return setting.ssid + "," + setting.password + "," + setting.address + "," + setting.mode + "," +
           setting.socket + ",qm_simulator Wi-Fi module 1.0";
}

} // namespace

std::string answer_of(WifiSetting& setting, std::string_view command) {
    constexpr std::string_view kAccessPoint = "AT+AP=";
    while (!command.empty() && (command.back() == '\r' || command.back() == '\n')) command.remove_suffix(1);
    if (command == "AT") return "OK";
    if (command == "AT+INQUIRY") return inquiry(setting);
    if (command == "AT+RST") {
        ++setting.restarts;
        return "OK";
    }
    if (command.starts_with(kAccessPoint)) {
        command.remove_prefix(kAccessPoint.size());
        return std::string(set_network(setting, command) ? kDone : kRefused);
    }
    for (const Setting& row : kSettings) {
        if (!command.starts_with(row.command)) continue;
        command.remove_prefix(row.command.size());
        if (!is_value(command)) return std::string(kRefused);
        setting.*row.value = command;
        return std::string(kDone);
    }
    return std::string(kRefused);
}

} // namespace qm::sim
