#include "device_arguments.h"

#include <algorithm>
#include <fstream>

namespace qm::ctl {
namespace {

// A text that stands between commas in a command to a Wi-Fi module.
bool fits_module(std::string_view text, std::size_t shortest, std::size_t longest) {
    const auto breaks = [](unsigned char c) { return c == ',' || c < ' ' || c == 0x7F; };
    return text.size() >= shortest && text.size() <= longest && std::ranges::none_of(text, breaks);
}

// Two hex digits each; no address of a group of stations.
std::optional<std::array<unsigned, 6>> to_mac(const std::string& text) {
    const auto pieces = split(text, text.find(':') != std::string::npos ? ':' : '-');
    std::array<unsigned, 6> mac{};
    if (pieces.size() != mac.size()) return std::nullopt;
    for (std::size_t i = 0; i < mac.size(); ++i) {
        const auto value = pieces[i].size() == 2 ? to_number(pieces[i], 0, 255, 16) : std::nullopt;
        if (!value) return std::nullopt;
        mac[i] = *value;
    }
    return mac[0] % 2 == 0 ? std::optional(mac) : std::nullopt;
}

} // namespace

std::string read_name(const std::string& text) {
    if (text.size() != 4) expected("a name of 4 characters, such as P001");
    return text;
}

std::string read_password(const std::string& text) {
    if (text.size() != 6) expected("a password of 6 characters");
    return text;
}

Levels read_levels(const std::string& path) {
    std::ifstream file(read_path(path));
    Levels levels{};
    std::string word;
    std::size_t count = 0;
    for (; file >> word; ++count) {
        const auto level = count < levels.size() ? to_number(word, 0, 255) : std::nullopt;
        if (!level) break;
        levels[count] = static_cast<Ouint8>(*level);
    }
    if (count != levels.size() || file)
        expected("a file of 48 numbers from 0 to 255, one for each half hour of the day");
    return levels;
}

int read_signed(const std::string& text) {
    const bool negative = text.starts_with('-');
    const auto value = to_number(std::string_view(text).substr(negative), 0, negative ? 32768 : 32767);
    if (!value) expected("a whole number from -32768 to 32767");
    return negative ? -static_cast<int>(*value) : static_cast<int>(*value);
}

std::string read_mac(const std::string& text) {
    const auto mac = to_mac(text);
    if (!mac) expected("a MAC address of one station in hex, such as 00:1a:2b:3c:4d:5e");
    std::string fields;
    for (const unsigned value : *mac) fields += (fields.empty() ? "" : "-") + std::to_string(value);
    return fields;
}

std::string read_ssid(const std::string& text) {
    if (!fits_module(text, 1, 32)) expected("an SSID of 1 to 32 bytes without comma");
    return text;
}

std::string read_wifi_key(const std::string& text) {
    if (!fits_module(text, 8, 63)) expected("a Wi-Fi password of 8 to 63 characters without comma");
    return text;
}

} // namespace qm::ctl
