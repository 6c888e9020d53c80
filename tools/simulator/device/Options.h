// What a simulated controller is to be, and whom it tells what happens.
#pragma once

#include "simulator/controller/ControllerState.h"
#include "simulator/controller/FileSystem.h"
#include "simulator/playback/Image.h"
#include "simulator/protocol/PixelFormat.h"
#include "simulator/wire/Fault.h"

#include <functional>

namespace qm::sim {

struct Options {
    std::string name{};               // what people call it
    std::string listen = "127.0.0.1"; // dotted IPv4 address
    std::uint16_t port = 0;           // 0: any free one
    std::uint16_t type = 0x0262;      // low byte: series, high byte: variant
    int width = 128, height = 32;     // pixels, 1 to 4,096
    ScreenColor color = ScreenColor::dual;
    std::optional<Fault> fault{};
    // Answers the network search with the longer record of a controller that has a web server.
    bool long_search = false;
    std::string store{}; // folder that keeps files and settings over restarts; empty: none

    // UDP ports, 0 for any free one: of the controllers' protocol (5007), and of the AT commands of a Wi-Fi
    // module (13769). Answers go to the sender alone. Only on 0.0.0.0 do broadcasts arrive.
    std::optional<std::uint16_t> udp{}, wifi{};
    std::string udp_listen = "0.0.0.0";

    bool keeps_log = false; // of requests

    // Where the host's clock begins, if not at the local time, and how many seconds it counts a second.
    std::optional<LocalSeconds> starts_at{};
    unsigned rate = 1;

    // The host's local time; the system's when empty. The controller's clock runs by it.
    std::function<LocalSeconds()> clock{};

    // Time since the controller was switched on; a steady clock's when empty. Programs and areas play by it.
    std::function<std::chrono::milliseconds()> uptime{};

    // Called from the simulator's thread, the one for requests also from that of who changes the controller,
    // the one for trouble while the simulator is made. They may look at it, and must not throw. The first two
    // are called before the answer goes out.
    std::function<void(const Image&)> on_screen{}; // the screen has changed
    // One line in words for every request, bad frame, and program that takes its turn.
    std::function<void(const std::string&)> on_request{};
    std::function<void(const Snapshot&, const std::vector<StoredFile>&)>
        on_state{};                                       // settings, files or the program changed
    std::function<void(const std::string&)> on_trouble{}; // the store failed; the simulator goes on
    std::function<void(bool updated)> on_closed{}; // a connection has ended; whether it updated the screen
};

} // namespace qm::sim
