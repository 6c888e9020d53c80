// qm_simulator: controllers on loopback whose screens can be seen.
#include "options/readers.h"
#include "simulator/Display.h"
#include "simulator/Settings.h"
#include "simulator/device/Fleet.h"
#include "simulator/playback/PixelReader.h"
#include "simulator/protocol/PixelFormat.h"
#include "simulator/web/WebServer.h"

#include <boost/asio/signal_set.hpp>
#include <csignal>
#include <cstdio>
#include <sys/resource.h>

namespace {

using namespace qm::sim;
using qm::options::hex;

constexpr int kFailed = 2;

void complain(const std::string& sentence) { std::fprintf(stderr, "qm_simulator: %s\n", sentence.c_str()); }

const char* name_of(ScreenColor color) {
    constexpr const char* kNames[] = {"single colour", "double colour", "three colours", "full colour"};
    return kNames[static_cast<std::size_t>(color) - 1];
}

std::string place(const std::string& address, std::uint16_t port) {
    return address + ":" + std::to_string(port);
}

std::string announcement(const Options& options, const Ports& ports) {
    std::string line = "qm_simulator ready: " + place(options.listen, ports.tcp()) + ", type " +
                       hex(options.type, 4) + ", " + std::to_string(options.width) + "x" +
                       std::to_string(options.height) + ", " + name_of(options.color);
    if (options.udp) line += "\nUDP: " + place(options.udp_listen, ports.udp());
    if (options.wifi) line += "\nWi-Fi module: " + place(options.udp_listen, ports.wifi());
    return line;
}

std::string announcement(const Fleet& fleet) {
    if (fleet.size() == 1) return announcement(fleet.device(0).options(), fleet.ports(0));
    std::string lines;
    for (std::size_t i = 0; i < fleet.size(); ++i) {
        const Options& options = fleet.device(i).options();
        lines += (i == 0 ? "" : "\n") + announcement(options, fleet.ports(i)) + ", " + options.name;
    }
    return lines;
}

void warn_of_type(Display& display, const Options& options) {
    if (!qm::series_of(options.type))
        display.complain("type " + hex(options.type, 4) +
                         " is of no known series: it takes handshakes and envelopes only");
    if (goes_together({packing_of(options.type), options.color})) return;
    display.complain("a controller of type " + hex(options.type, 4) + " has no pixel data for " +
                     name_of(options.color) + ": areas will stay black");
}

std::string sentence_for(const EndpointError& error, const std::string& option) {
    if (error.code() != std::errc::address_in_use) return error.what();
    return error.endpoint + " is in use; choose another port with " + option + ", or any free one with " +
           option + " 0";
}

void open_page(std::optional<WebServer>& web, const WebPlace& place, Fleet& fleet) try {
    web.emplace(place.address, place.port, fleet);
} catch (const EndpointError& error) {
    throw std::runtime_error(sentence_for(error, "--web"));
}

// Runs until a signal or, when asked for, until the first connection that updated the screen has closed.
void run(const Settings& settings) {
    Display display(settings);
    asio::io_context context;
    asio::signal_set signals(context, SIGINT, SIGTERM);
    signals.async_wait([&](NetworkError, int) { context.stop(); });

    std::vector<Options> controllers = display.watched();
    if (settings.once)
        for (Options& options : controllers)
            options.on_closed = [&](bool updated) {
                if (updated) context.stop();
            };
    auto held = display.hold(); // until it is said that the controllers are there
    Fleet fleet(std::move(controllers));
    std::optional<WebServer> web;
    if (settings.web) open_page(web, *settings.web, fleet);
    display.begin(fleet, announcement(fleet) + (web ? "\nScreen: http://" + web->place() + "/" : ""));
    for (const Options& options : settings.controllers) warn_of_type(display, options);
    held.unlock();
    context.run();
    display.finish(fleet);
}

// A thousand controllers are a thousand descriptors, and as many again that are connected.
void allow_many_descriptors() {
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
    limit.rlim_cur = limit.rlim_max;
    (void)::setrlimit(RLIMIT_NOFILE, &limit);
}

} // namespace

int main(int argc, char** argv) {
    int status = 0;
    const auto settings = parse_settings(argc, argv, status);
    if (!settings) return status;
    allow_many_descriptors();
    try {
        run(*settings);
        return 0;
    } catch (const EndpointError& failure) {
        complain(sentence_for(failure, "--port"));
        return kFailed;
    } catch (const std::exception& failure) {
        complain(failure.what());
        return kFailed;
    }
}
