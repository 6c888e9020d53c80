#include "simulator/Settings.h"

#include "options/ArgumentList.h"
#include "simulator/controller_list.h"
#include "simulator/device/HostClock.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cmath>

namespace qm::sim {
namespace {

using namespace options;

constexpr int kLongestPicture = 16384;    // pixels on the longer side
constexpr int kLargestPicture = 32 << 20; // pixels; it is written before the answer goes out
constexpr unsigned kMostRequests = 1000000, kLongestDelay = 600000, kLargestScale = 64;

// Options that mean something only together with others.
struct Typed {
    Options options; // of every controller
    unsigned count = 1;
    std::string controllers; // a file
    bool udp = false, wifi = false;
    std::uint16_t udp_port = 5007, wifi_port = 13769;
    std::optional<FaultKind> fault;
    unsigned fault_after = 0, fault_delay = 200;
};

FaultKind read_fault(const std::string& text) {
    const auto kind = fault_named(text);
    if (!kind) expected("one of " + fault_names());
    return *kind;
}

std::string fault_help() {
    std::string help = "Spoil the answers:";
#define QM_SIM_FAULT_HELP(name, text, meaning) help += "\n  " text ": " meaning;
    QM_SIM_FAULTS(QM_SIM_FAULT_HELP)
#undef QM_SIM_FAULT_HELP
    return help;
}

void add_controller_options(ArgumentList& list, Options& options) {
    add_value(list, "--listen", options.listen, "IP", "Address to listen on (default 127.0.0.1)",
              read_address);
    add_number(list, "--port", options.port, 0, kLastPort, "TCP port, 0 for any free one (default 5005)");
    add_value(list, "--type", options.type, "TYPE",
              "Controller type: low byte the series, high byte the variant (default 0x0262)",
              [](const std::string& text) { return static_cast<std::uint16_t>(read_type(text)); });
    list.add("--size", "WxH", "Pixels of the screen (default 128x32)",
             [&options](const std::string& text) { take_size(options, text); });
    add_value(list, "--color", options.color, "COLOR",
              "LEDs of the screen: single, double, three or full, or 1 to 4 (default double)", read_color);
}

LocalSeconds read_clock(const std::string& text) {
    const auto time = clock_from(text);
    if (!time) expected("a time of the years 2000 to 2099 such as '2026-12-31 23:59:50'");
    return *time;
}

void add_clock_options(ArgumentList& list, Options& options) {
    add_value(list, "--clock", options.starts_at, "TIME",
              "Where the host's clock begins, such as '2026-12-31 23:59:50' (default: local time)",
              read_clock);
    add_number(list, "--rate", options.rate, 0, kFastest,
               "Seconds that this clock counts a second: 60 is an hour a minute (default 1)");
}

void add_many_options(ArgumentList& list, Typed& typed) {
    const Argument count = add_number(list, "--count", typed.count, 1, kMostControllers,
                                      "So many controllers, on this port and those that follow");
    add_value(list, "--controllers", typed.controllers, "FILE",
              "JSON list of controllers: name, port, type, size and color of each;\n"
              "what one does not say is as the options do",
              read_text)
        .excludes(count);
}

void add_network_options(ArgumentList& list, Typed& typed) {
    Options& options = typed.options;
    list.add_flag("--udp", typed.udp, "Answer over UDP, too, as controllers answer broadcasts");
    add_number(list, "--udp-port", typed.udp_port, 0, kLastPort,
               "Its port, 0 for any free one (default 5007)");
    list.add_flag("--wifi", typed.wifi, "Have a Wi-Fi module, which answers AT commands over UDP");
    add_number(list, "--wifi-port", typed.wifi_port, 0, kLastPort,
               "Its port, 0 for any free one (default 13769)");
    add_value(list, "--udp-listen", options.udp_listen, "IP",
              "Address of both; 0.0.0.0 takes broadcasts (default " + options.udp_listen + ")", read_address);
    list.add_flag("--long-search", options.long_search,
                  "Answer the network search as a controller with a web server");
}

WebPlace read_web_place(const std::string& text) {
    const auto colon = text.rfind(':');
    const bool has_address = colon != std::string::npos;
    WebPlace place;
    if (has_address) place.address = text.substr(0, colon);
    const auto port = to_number(has_address ? text.substr(colon + 1) : text, 0, kLastPort);
    if (!port || !is_dotted_ipv4(place.address))
        expected("[ADDRESS:]PORT with an IPv4 address and a port from 0 to 65535, such as 8080");
    place.port = static_cast<std::uint16_t>(*port);
    return place;
}

void add_output_options(ArgumentList& list, Settings& settings, Typed& typed) {
    add_value(list, "--web", settings.web, "[IP:]PORT",
              "Show screens, log and state in the browser, and take commands of scripts; on loopback\n"
              "unless an address is given, port 0 for any free one",
              read_web_place);
    list.add_flag(
        "--show", settings.show,
        "Print the screen at each change, two pixels a character;\n"
        "on a terminal scaled to its width, and in its place unless --verbose; of several controllers\n"
        "that of the first one");
    add_value(list, "--frames", settings.frames, "DIR",
              "Folder for a PNG at each change: frame-0001.png, ...; of several\n"
              "controllers a folder in it for each",
              read_text);
    add_value(list, "--screenshot", settings.screenshot, "FILE",
              "PNG of the LED panel, written at the start and at each change;\n"
              "of several controllers, here and below, a folder",
              read_text);
    add_number(list, "--scale", settings.scale, 1, kLargestScale,
               "Pixels of the screenshot for each LED, each way (default 8)");
    add_value(list, "--record", settings.record, "FILE", "GIF of all that is shown, with true frame times",
              read_text);
    add_value(list, "--state,--json", settings.state, "FILE",
              "JSON file of settings and files, written at each change", read_text);
    add_value(list, "--store", typed.options.store, "DIR",
              "Folder that keeps files and settings over restarts", read_text);
    list.add_flag("--once", settings.once,
                  "End when the first connection that updated the screen has closed;\n"
                  "running text may not have come in by then");
    list.add_flag("--verbose,-v", settings.verbose, "Print a line for every request on standard error");
}

void add_fault_options(ArgumentList& list, Typed& typed) {
    add_value(list, "--fault", typed.fault, "KIND", fault_help(), read_fault);
    add_number(list, "--fault-after", typed.fault_after, 0, kMostRequests,
               "Requests answered well before; a handshake is one (default 0)");
    add_number(list, "--fault-delay", typed.fault_delay, 0, kLongestDelay,
               "Milliseconds of delay and split (default 200)");
}

int largest_scale(const Options& size) {
    const double by_area = std::sqrt(double{kLargestPicture} / size.width / size.height);
    return std::min(static_cast<int>(by_area), kLongestPicture / std::max(size.width, size.height));
}

// Broadcasts ask a port that only one of them can have.
void require_one(const Typed& typed, const std::vector<Options>& controllers) {
    if (controllers.size() > 1 && (typed.udp || typed.wifi))
        throw std::invalid_argument("--udp and --wifi: expected one controller");
}

std::vector<Options> controllers_of(Typed typed) {
    Options& options = typed.options;
    if (typed.udp) options.udp = typed.udp_port;
    if (typed.wifi) options.wifi = typed.wifi_port;
    if (typed.fault)
        options.fault = Fault{*typed.fault, typed.fault_after, std::chrono::milliseconds(typed.fault_delay)};
    auto controllers = typed.controllers.empty() ? copies_of(options, typed.count)
                                                 : controllers_in(typed.controllers, options);
    require_one(typed, controllers);
    return controllers;
}

void apply(Settings& settings, const Typed& typed) try {
    settings.controllers = controllers_of(typed);
    for (Options& options : settings.controllers) {
        options.keeps_log = settings.web.has_value();
        settings.scale = std::min(settings.scale, largest_scale(options));
    }
} catch (const std::invalid_argument& error) {
    throw CLI::ValidationError(typed.controllers.empty() ? "--count" : "--controllers", error.what());
}

} // namespace

std::optional<Settings> parse_settings(int argc, char** argv, int& status) {
    CLI::App app("A simulated LED display controller, to try things out without hardware.", "qm_simulator");
    Settings settings;
    Typed typed;
    typed.options.port = 5005;
    app.set_version_flag("--version", "qm_simulator " QM_SIMULATOR_VERSION, "Print the version and leave");
    ArgumentList list(app);
    add_controller_options(list, typed.options);
    add_clock_options(list, typed.options);
    add_many_options(list, typed);
    add_network_options(list, typed);
    add_output_options(list, settings, typed);
    add_fault_options(list, typed);
    try {
        app.parse(argc, argv);
        apply(settings, typed);
    } catch (const CLI::ParseError& error) {
        status = app.exit(error) == 0 ? 0 : 1;
        return std::nullopt;
    }
    return settings;
}

} // namespace qm::sim
