// The command line of qm_simulator.
#pragma once

#include "simulator/device/Options.h"

#include <optional>
#include <string>

namespace qm::sim {

// Where the page is to be had; port 0: any free one.
struct WebPlace {
    std::string address = "127.0.0.1";
    std::uint16_t port = 0;
};

struct Settings {
    std::vector<Options> controllers; // at least one
    std::string frames;               // folder, empty for none
    std::string screenshot;           // file, for several controllers a folder; empty for none
    int scale = 8;                    // of the screenshot
    std::string record;               // likewise
    std::string state;                // likewise
    std::optional<WebPlace> web;
    bool show = false;
    bool once = false;
    bool verbose = false;
};

// Nothing when the program is to end at once with the status, after the help or an error.
[[nodiscard]] std::optional<Settings> parse_settings(int argc, char** argv, int& status);

} // namespace qm::sim
