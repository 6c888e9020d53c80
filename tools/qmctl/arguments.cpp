#include "arguments.h"

#include <algorithm>
#include <fstream>

namespace qm::ctl {

Rect read_rect(const std::string& text) {
    const auto pieces = split(text, ',');
    std::array<std::uint16_t, 4> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto value =
            pieces.size() == values.size() ? to_number(pieces[i], i < 2 ? 0 : 1, 65535) : std::nullopt;
        if (!value) expected("X,Y,W,H in pixels (0 to 65535, W and H not 0), such as 0,0,128,32");
        values[i] = static_cast<std::uint16_t>(*value);
    }
    return {values[0], values[1], values[2], values[3]};
}

std::vector<Controller> read_controllers(const std::string& text) {
    std::vector<Controller> controllers;
    for (const std::string_view one : split(text, ','))
        controllers.push_back(read_controller(std::string(one)));
    return controllers;
}

std::vector<Controller> read_controller_list(const std::string& path) {
    std::ifstream file(path);
    if (!file) expected("a file of addresses that can be read");
    std::vector<Controller> controllers;
    unsigned number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        line.erase(std::min(line.find('#'), line.size()));
        const auto first = line.find_first_not_of(" \t\r");
        if (first == std::string::npos) continue;
        try {
            controllers.push_back(
                read_controller(line.substr(first, line.find_last_not_of(" \t\r") + 1 - first)));
        } catch (const std::invalid_argument& wrong) {
            throw std::invalid_argument("line " + std::to_string(number) + ": " + wrong.what());
        }
    }
    if (controllers.empty() || file.bad()) expected("a file with the address of a controller on every line");
    return controllers;
}

Controller read_controller(const std::string& text) {
    const auto colon = text.find(':');
    const std::string ip = text.substr(0, colon);
    const auto port =
        colon == std::string::npos ? Controller().port() : to_number(text.substr(colon + 1), 1, 65535);
    if (!is_dotted_ipv4(ip) || !port)
        expected("an IPv4 address with or without a port, such as 192.168.0.199:5005");
    return Controller(ip, static_cast<Ouint16>(*port));
}

} // namespace qm::ctl
