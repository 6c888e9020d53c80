#include "arguments.h"

#include <array>

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

Controller read_controller(const std::string& text) {
    const NamedController host = read_host(text);
    if (!is_dotted_ipv4(host.host))
        expected("an IPv4 address with or without a port, such as 192.168.0.199:5005");
    return Controller(host.host, host.port);
}

} // namespace qm::ctl
