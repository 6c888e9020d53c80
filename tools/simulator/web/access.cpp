#include "simulator/web/access.h"

#include <algorithm>
#include <cctype>

namespace qm::sim {
namespace {

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return text;
}

// A browser leaves out the port that HTTP has by itself.
bool is_host(const std::string& host, const std::string& place) {
    return host == place || host + ":80" == place;
}

} // namespace

// A name that was made to lead here is another host; an address cannot be.
std::optional<std::string> refused(const Caller& caller, const std::string& place, const std::string& here) {
    const std::string host = lower(caller.host);
    const std::string local = "localhost" + here.substr(std::min(here.find(':'), here.size()));
    if (!is_host(host, place) && !is_host(host, here) && !is_host(host, local))
        return "this host is " + place + " or " + local;
    if (!caller.origin.empty() && lower(caller.origin) != "http://" + host)
        return "another origin may not ask";
    return std::nullopt;
}

bool says_json(std::string_view content_type) {
    std::string type = lower(std::string(content_type.substr(0, content_type.find(';'))));
    type.erase(type.find_last_not_of(" \t") + 1);
    return type == "application/json";
}

} // namespace qm::sim
