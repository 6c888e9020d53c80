#include "simulator/Settings.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <arpa/inet.h>
#include <charconv>
#include <climits>
#include <cmath>

namespace qm::sim {
namespace {

constexpr unsigned kLongestSide = 4096;
constexpr int kLongestPicture = 16384;    // pixels on the longer side
constexpr int kLargestPicture = 32 << 20; // pixels; it is written before the answer goes out
constexpr unsigned kMostRequests = 1000000, kLongestDelay = 600000, kLargestScale = 64;

// The options as they are typed.
struct Typed {
    std::string port = "5005";
    std::string udp_port = "5007", wifi_port = "13769";
    bool udp = false, wifi = false;
    std::string type = "0x0262";
    std::string size = "128x32";
    std::string color = "double";
    std::string scale = "8";
    std::string fault;
    std::string fault_after = "0";
    std::string fault_delay = "200";
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

// Refuses what convert cannot make anything of, in the words of expected.
template <class Convert> CLI::Validator expect(Convert convert, const std::string& expected) {
    return {[=](std::string& text) {
                return convert(text) ? std::string() : "expected " + expected + ", not \"" + text + "\"";
            },
            ""};
}

CLI::Validator expect_number(unsigned lowest, unsigned highest, const std::string& what) {
    const auto in_range = [=](const std::string& text) {
        const auto value = number(text, highest);
        return value && *value >= lowest;
    };
    return expect(in_range, what + " from " + std::to_string(lowest) + " to " + std::to_string(highest));
}

bool is_address(const std::string& text) {
    in_addr address{};
    return inet_pton(AF_INET, text.c_str(), &address) == 1;
}

std::string fault_help() {
    std::string help = "Spoil the answers:";
#define QM_SIM_FAULT_HELP(name, text, meaning) help += "\n  " text ": " meaning;
    QM_SIM_FAULTS(QM_SIM_FAULT_HELP)
#undef QM_SIM_FAULT_HELP
    return help;
}

CLI::Option* add(CLI::App& app, const char* name, std::string& value, const std::string& help,
                 const char* value_name, CLI::Validator validator) {
    return app.add_option(name, value, help)
        ->type_name(value_name)
        ->capture_default_str()
        ->check(std::move(validator));
}

void add_controller_options(CLI::App& app, Settings& settings, Typed& typed) {
    const auto is_type = [](const std::string& text) { return number(text, 0xFFFF).has_value(); };
    add(app, "--listen", settings.options.listen, "Address to listen on", "IP",
        expect(is_address, "a dotted IPv4 address, such as 127.0.0.1"));
    add(app, "--port", typed.port, "TCP port, 0 for any free one", "N", expect_number(0, 65535, "a port"));
    add(app, "--type", typed.type, "SimulatedController type: low byte the series, high byte the variant",
        "TYPE", expect(is_type, "a controller type from 0 to 0xFFFF, such as 0x0262"));
    add(app, "--size", typed.size, "Pixels of the screen", "WxH",
        expect(size_from, "WIDTHxHEIGHT with 1 to 4096 pixels each, such as 128x32"));
    add(app, "--color", typed.color, "LEDs of the screen: single, double, three or full, or 1 to 4", "COLOR",
        expect(color_from, "single, double, three or full, or 1 to 4"));
}

void add_network_options(CLI::App& app, Settings& settings, Typed& typed) {
    app.add_flag("--udp", typed.udp, "Answer over UDP, too, as controllers answer broadcasts");
    add(app, "--udp-port", typed.udp_port, "Its port, 0 for any free one", "N",
        expect_number(0, 65535, "a port"));
    app.add_flag("--wifi", typed.wifi, "Have a Wi-Fi module, which answers AT commands over UDP");
    add(app, "--wifi-port", typed.wifi_port, "Its port, 0 for any free one", "N",
        expect_number(0, 65535, "a port"));
    add(app, "--udp-listen", settings.options.udp_listen, "Address of both; 0.0.0.0 takes broadcasts", "IP",
        expect(is_address, "a dotted IPv4 address, such as 127.0.0.1"));
    app.add_flag("--web", settings.options.web,
                 "Answer the network search as a controller with a web server");
}

void add_output_options(CLI::App& app, Settings& settings, Typed& typed) {
    app.add_flag("--show", settings.show,
                 "Print the screen at each change, two pixels a character;\n"
                 "on a terminal in its place, unless --verbose");
    app.add_option("--frames", settings.frames, "Folder for a PNG at each change: frame-0001.png, ...")
        ->type_name("DIR");
    app.add_option("--screenshot", settings.screenshot,
                   "PNG of the LED panel, written at the start and at each change")
        ->type_name("FILE");
    add(app, "--scale", typed.scale, "Pixels of the screenshot for each LED, each way", "N",
        expect_number(1, kLargestScale, "a number"));
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
    add(app, "--fault", typed.fault, fault_help(), "KIND", expect(fault_named, "one of " + fault_names()));
    add(app, "--fault-after", typed.fault_after, "Requests answered well before; a handshake is one", "N",
        expect_number(0, kMostRequests, "a number"));
    add(app, "--fault-delay", typed.fault_delay, "Milliseconds of delay and split", "N",
        expect_number(0, kLongestDelay, "a number of milliseconds"));
}

int largest_scale(Size size) {
    const double by_area = std::sqrt(double{kLargestPicture} / size.width / size.height);
    return std::min(static_cast<int>(by_area), kLongestPicture / std::max(size.width, size.height));
}

// The texts have been checked.
unsigned value_of(const std::string& text) { return number(text, UINT_MAX).value_or(0); }

void apply(Settings& settings, const Typed& typed) {
    Options& options = settings.options;
    options.port = static_cast<std::uint16_t>(value_of(typed.port));
    if (typed.udp) options.udp = static_cast<std::uint16_t>(value_of(typed.udp_port));
    if (typed.wifi) options.wifi = static_cast<std::uint16_t>(value_of(typed.wifi_port));
    options.type = static_cast<std::uint16_t>(value_of(typed.type));
    const Size size = size_from(typed.size).value_or(Size{1, 1});
    options.width = size.width;
    options.height = size.height;
    options.color = color_from(typed.color).value_or(ScreenColor::dual);
    if (const auto kind = fault_named(typed.fault))
        options.fault =
            Fault{*kind, value_of(typed.fault_after), std::chrono::milliseconds(value_of(typed.fault_delay))};
    settings.scale = std::min(static_cast<int>(value_of(typed.scale)), largest_scale(size));
}

} // namespace

std::optional<Settings> parse_settings(int argc, char** argv, int& status) {
    CLI::App app("A simulated LED display controller, to try things out without hardware.", "qm_simulator");
    Settings settings;
    Typed typed;
    add_controller_options(app, settings, typed);
    add_network_options(app, settings, typed);
    add_output_options(app, settings, typed);
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
