// What is asked over HTTP, but for what goes on and on, and what is answered.
#pragma once

#include "simulator/web/Site.h"

#include <map>
#include <string>
#include <string_view>

namespace qm::sim {

struct WebRequest {
    std::string method, path;
    std::map<std::string, std::string> query{};
    std::string content_type{}, body{};
    std::string peer{}; // address and port

    // Takes the target apart: /path?name=value&name.
    void set_target(std::string_view target);
};

struct WebAnswer {
    unsigned status = 200;
    std::string type = "application/json", body{};
    std::string allowed{}; // methods, when another one was asked for
};

// An answer with {"error": ...}.
[[nodiscard]] WebAnswer web_error(unsigned status, const std::string& what);

// The page's files and /api/.
[[nodiscard]] WebAnswer answer_to(const WebRequest& request, Site& site);

// Of the parameter "controller", 0 without one. Throws WebAnswer.
[[nodiscard]] std::size_t controller_in(const WebRequest& request, const Fleet& fleet);

} // namespace qm::sim
