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

std::chrono::seconds read_duration(const std::string& text, std::chrono::minutes longest) {
    const auto most = static_cast<unsigned>(std::chrono::seconds(longest).count());
    unsigned sum = 0;
    for (std::string_view rest = text; !rest.empty() && sum <= most;) {
        const std::size_t digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
        const char unit = digits < rest.size() ? rest[digits] : ' ';
        const unsigned seconds = unit == 'h' ? 3600 : unit == 'm' ? 60 : unit == 's' ? 1 : 0;
        const auto number = to_number(rest.substr(0, digits), 0, seconds > 0 ? most / seconds : 0);
        sum = number && seconds > 0 ? sum + *number * seconds : most + 1;
        rest.remove_prefix(std::min(digits + 1, rest.size()));
    }
    const auto minutes = longest.count();
    if (sum == 0 || sum > most)
        expected("a time such as 90s, 5m or 1h30m, of at most " +
                 (minutes % 60 == 0 ? std::to_string(minutes / 60) + "h" : std::to_string(minutes) + "m"));
    return std::chrono::seconds(sum);
}

Controller read_controller(const std::string& text) {
    const NamedController host = read_host(text);
    if (!is_dotted_ipv4(host.host))
        expected("an IPv4 address with or without a port, such as 192.168.0.199:5005");
    return Controller(host.host, host.port);
}

} // namespace qm::ctl
