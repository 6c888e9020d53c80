#include "simulator/Settings.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <arpa/inet.h>
#include <charconv>
#include <cmath>

namespace qm::sim {
namespace {

constexpr unsigned kLongestSide = 4096;
constexpr int kLongestPicture = 16384;    // pixels on the longer side
constexpr int kLargestPicture = 32 << 20; // pixels; it is written before the answer goes out
constexpr unsigned kMostRequests = 1000000, kLongestDelay = 600000, kLargestScale = 64;

// Options that mean something only together with others.
struct Typed {
    bool udp = false, wifi = false;
    std::uint16_t udp_port = 5007, wifi_port = 13769;
    std::optional<FaultKind> fault;
    unsigned fault_after = 0, fault_delay = 200;
};

// The whole text as a number, hexadecimal after 0x, or nothing when it is none or above the limit.
std::optional<unsigned> number(std::string_view text, unsigned limit) {
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    if (hex) text.remove_prefix(2);
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, hex ? 16 : 10);
    if (error != std::errc{} || end != text.data() + text.size() || value > limit) return std::nullopt;
    return value;
}

struct Size {
    int width, height;
};

std::optional<Size> size_from(const std::string& text) {
    const std::size_t cross = text.find('x');
    if (cross == std::string::npos || text.starts_with("0")) return std::nullopt;
    const auto width = number(std::string_view(text).substr(0, cross), kLongestSide);
    const auto height = number(std::string_view(text).substr(cross + 1), kLongestSide);
    if (!width || !height || *width == 0 || *height == 0) return std::nullopt;
    return Size{static_cast<int>(*width), static_cast<int>(*height)};
}

std::optional<ScreenColor> color_from(const std::string& text) {
    static constexpr std::string_view kNames[] = {"single", "double", "three", "full"};
    for (unsigned i = 0; i < std::size(kNames); ++i)
        if (text == kNames[i] || text == std::to_string(i + 1)) return static_cast<ScreenColor>(i + 1);
    return std::nullopt;
}

std::optional<std::string> address_from(const std::string& text) {
    in_addr address{};
    return inet_pton(AF_INET, text.c_str(), &address) == 1 ? std::optional(text) : std::nullopt;
}

// Keeps what convert makes of the text, and refuses a text that it makes nothing of.
template <class Convert, class Keep>
void add(CLI::App& app, const char* name, const std::string& standard, const std::string& help,
         const char* value_name, Convert convert, const std::string& expected, Keep keep) {
    const auto take_over = [=](const std::string& text) {
        if (const auto value = convert(text)) keep(*value);
    };
    const auto complaint = [=](const std::string& text) {
        return convert(text) ? std::string() : "expected " + expected + ", not \"" + text + "\"";
    };
    app.add_option_function<std::string>(name, take_over, help)
        ->type_name(value_name)
        ->default_str(standard)
        ->check(complaint);
}

template <class Number>
void add_number(CLI::App& app, const char* name, Number& value, const std::string& help,
                const std::string& what, unsigned lowest, unsigned highest) {
    const auto in_range = [=](const std::string& text) {
        const auto typed = number(text, highest);
        return typed && *typed >= lowest ? typed : std::nullopt;
    };
    add(app, name, std::to_string(value), help, "N", in_range,
        what + " from " + std::to_string(lowest) + " to " + std::to_string(highest),
        [&value](unsigned typed) { value = static_cast<Number>(typed); });
}

void add_address(CLI::App& app, const char* name, std::string& value, const std::string& help) {
    add(app, name, value, help, "IP", address_from, "a dotted IPv4 address, such as 127.0.0.1",
        [&value](const std::string& address) { value = address; });
}

std::string fault_help() {
    std::string help = "Spoil the answers:";
#define QM_SIM_FAULT_HELP(name, text, meaning) help += "\n  " text ": " meaning;
    QM_SIM_FAULTS(QM_SIM_FAULT_HELP)
#undef QM_SIM_FAULT_HELP
    return help;
}

void add_controller_options(CLI::App& app, Options& options) {
    const auto type_from = [](const std::string& text) { return number(text, 0xFFFF); };
    add_address(app, "--listen", options.listen, "Address to listen on");
    add_number(app, "--port", options.port, "TCP port, 0 for any free one", "a port", 0, 65535);
    add(app, "--type", "0x0262", "Controller type: low byte the series, high byte the variant", "TYPE",
        type_from, "a controller type from 0 to 0xFFFF, such as 0x0262",
        [&options](unsigned type) { options.type = static_cast<std::uint16_t>(type); });
    add(app, "--size", "128x32", "Pixels of the screen", "WxH", size_from,
        "WIDTHxHEIGHT with 1 to 4096 pixels each, such as 128x32", [&options](Size size) {
            options.width = size.width;
            options.height = size.height;
        });
    add(app, "--color", "double", "LEDs of the screen: single, double, three or full, or 1 to 4", "COLOR",
        color_from, "single, double, three or full, or 1 to 4",
        [&options](ScreenColor color) { options.color = color; });
}

void add_network_options(CLI::App& app, Options& options, Typed& typed) {
    app.add_flag("--udp", typed.udp, "Answer over UDP, too, as controllers answer broadcasts");
    add_number(app, "--udp-port", typed.udp_port, "Its port, 0 for any free one", "a port", 0, 65535);
    app.add_flag("--wifi", typed.wifi, "Have a Wi-Fi module, which answers AT commands over UDP");
    add_number(app, "--wifi-port", typed.wifi_port, "Its port, 0 for any free one", "a port", 0, 65535);
    add_address(app, "--udp-listen", options.udp_listen, "Address of both; 0.0.0.0 takes broadcasts");
    app.add_flag("--web", options.web, "Answer the network search as a controller with a web server");
}

void add_output_options(CLI::App& app, Settings& settings) {
    app.add_flag("--show", settings.show,
                 "Print the screen at each change, two pixels a character;\n"
                 "on a terminal in its place, unless --verbose");
    app.add_option("--frames", settings.frames, "Folder for a PNG at each change: frame-0001.png, ...")
        ->type_name("DIR");
    app.add_option("--screenshot", settings.screenshot,
                   "PNG of the LED panel, written at the start and at each change")
        ->type_name("FILE");
    add_number(app, "--scale", settings.scale, "Pixels of the screenshot for each LED, each way", "a number",
               1, kLargestScale);
    app.add_option("--state,--json", settings.state,
                   "JSON file of settings and files, written at each change")
        ->type_name("FILE");
    app.add_option("--store", settings.options.store, "Folder that keeps files and settings over restarts")
        ->type_name("DIR");
    app.add_flag("--once", settings.once,
                 "End when the first connection that updated the screen has closed;\n"
                 "running text may not have come in by then");
    app.add_flag("--verbose,-v", settings.verbose, "Print a line for every request on standard error");
}

void add_fault_options(CLI::App& app, Typed& typed) {
    add(app, "--fault", "", fault_help(), "KIND", fault_named, "one of " + fault_names(),
        [&typed](FaultKind kind) { typed.fault = kind; });
    add_number(app, "--fault-after", typed.fault_after, "Requests answered well before; a handshake is one",
               "a number", 0, kMostRequests);
    add_number(app, "--fault-delay", typed.fault_delay, "Milliseconds of delay and split",
               "a number of milliseconds", 0, kLongestDelay);
}

int largest_scale(const Options& size) {
    const double by_area = std::sqrt(double{kLargestPicture} / size.width / size.height);
    return std::min(static_cast<int>(by_area), kLongestPicture / std::max(size.width, size.height));
}

void apply(Settings& settings, const Typed& typed) {
    Options& options = settings.options;
    if (typed.udp) options.udp = typed.udp_port;
    if (typed.wifi) options.wifi = typed.wifi_port;
    if (typed.fault)
        options.fault = Fault{*typed.fault, typed.fault_after, std::chrono::milliseconds(typed.fault_delay)};
    settings.scale = std::min(settings.scale, largest_scale(options));
}

} // namespace

std::optional<Settings> parse_settings(int argc, char** argv, int& status) {
    CLI::App app("A simulated LED display controller, to try things out without hardware.", "qm_simulator");
    Settings settings;
    settings.options.port = 5005;
    Typed typed;
    add_controller_options(app, settings.options);
    add_network_options(app, settings.options, typed);
    add_output_options(app, settings);
    add_fault_options(app, typed);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        status = app.exit(error) == 0 ? 0 : 1;
        return std::nullopt;
    }
    apply(settings, typed);
    return settings;
}

} // namespace qm::sim
