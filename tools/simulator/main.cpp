// qm_simulator: a controller on loopback whose screen can be seen.
#include "simulator/PixelData.h"
#include "simulator/Series.h"
#include "simulator/Store.h"
#include "simulator/picture.h"
#include "simulator/settings.h"
#include "simulator/state_json.h"
#include "simulator/terminal.h"

#include <asio.hpp>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <unistd.h>

namespace {

using namespace qm::sim;

constexpr int kUsage = 1, kFailed = 2;

void complain(const std::string& words) { std::fprintf(stderr, "qm_simulator: %s\n", words.c_str()); }

std::string hex(std::uint16_t type) {
    char text[8];
    std::snprintf(text, sizeof text, "0x%04X", type);
    return text;
}

const char* name_of(ScreenColor color) {
    switch (color) {
    case ScreenColor::single:
        return "single colour";
    case ScreenColor::dual:
        return "double colour";
    case ScreenColor::three:
        return "three colours";
    case ScreenColor::full:
        return "full colour";
    }
    return "";
}

// Shows the screen, and keeps the state, in the ways that were asked for. What cannot be written is
// complained about and does not end the simulator. Any thread may call it.
class Display {
  public:
    explicit Display(const Settings& settings)
        : m_settings(settings), m_printer(STDOUT_FILENO, isatty(STDOUT_FILENO) == 1 && !settings.verbose) {}

    // Nothing is shown while this is held.
    [[nodiscard]] std::unique_lock<std::mutex> hold() { return std::unique_lock(m_mutex); }

    void show(const Image& screen) {
        const std::lock_guard lock(m_mutex);
        if (m_settings.show) m_printer.print(screen);
        if (!m_settings.frames.empty())
            write(screen, std::filesystem::path(m_settings.frames) / next_frame());
        write_screenshot(screen);
    }

    // The one before any change.
    void begin(const Image& screen) { write_screenshot(screen); }

    // The last one.
    void finish(const Image& screen) {
        const std::lock_guard lock(m_mutex);
        if (m_printer.missed()) m_printer.print(screen);
        write_screenshot(screen);
    }

    void keep(const Snapshot& snapshot, const std::vector<StoredFile>& files) try {
        const std::string text = state_text(snapshot, files);
        write_whole(m_settings.state, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    } catch (const std::exception& error) {
        complain(error.what());
    }

    void complain(const std::string& words) {
        ::complain(words);
        m_printer.interrupt();
    }

  private:
    void write_screenshot(const Image& screen) {
        if (!m_settings.screenshot.empty()) write(led_panel(screen, m_settings.scale), m_settings.screenshot);
    }

    std::string next_frame() {
        char name[32];
        std::snprintf(name, sizeof name, "frame-%04u.png", ++m_frame);
        return name;
    }

    void write(const Image& image, const std::filesystem::path& path) try {
        write_png(image, path);
    } catch (const std::exception& error) {
        complain(error.what());
    }

    const Settings& m_settings;
    ScreenPrinter m_printer;
    std::mutex m_mutex;
    unsigned m_frame = 0;
};

void announce(const Settings& settings, const Simulator& simulator) {
    const Options& options = settings.options;
    std::printf("qm_simulator ready: %s:%u, type %s, %dx%d, %s\n", options.listen.c_str(),
                unsigned{simulator.port()}, hex(options.type).c_str(), options.width, options.height,
                name_of(options.color));
    if (options.udp) std::printf("UDP: %s:%u\n", options.udp_listen.c_str(), unsigned{simulator.udp_port()});
    if (options.wifi)
        std::printf("Wi-Fi module: %s:%u\n", options.udp_listen.c_str(), unsigned{simulator.wifi_port()});
    std::fflush(stdout);
    if (!goes_together({transfer_mode_of(options.type), options.color}))
        complain("a controller of type " + hex(options.type) + " has no pixel data for " +
                 name_of(options.color) + ": areas will stay black");
}

// Runs until a signal or, when asked for, until the first connection that updated the screen has closed.
void run(const Settings& settings) {
    Display display(settings);
    asio::io_context context;
    asio::signal_set signals(context, SIGINT, SIGTERM);
    signals.async_wait([&](std::error_code, int) { context.stop(); });

    Options options = settings.options;
    options.on_screen = [&](const Image& screen) { display.show(screen); };
    if (settings.verbose)
        options.on_request = [](const std::string& words) { std::fprintf(stderr, "%s\n", words.c_str()); };
    if (!settings.state.empty())
        options.on_state = [&](const Snapshot& snapshot, const std::vector<StoredFile>& files) {
            display.keep(snapshot, files);
        };
    options.on_trouble = [&](const std::string& words) { display.complain(words); };
    if (settings.once)
        options.on_closed = [&](bool updated) {
            if (updated) context.stop();
        };
    auto held = display.hold(); // until it is said that the controller is there
    Simulator simulator(std::move(options));
    display.begin(simulator.screen());
    if (!settings.state.empty()) display.keep(simulator.state(), simulator.files());
    announce(settings, simulator);
    held.unlock();
    context.run();
    display.finish(simulator.screen());
}

int fail(const Settings& settings, const std::system_error& error) {
    const std::string place = settings.options.listen + ":" + std::to_string(settings.options.port);
    if (error.code() == asio::error::address_in_use)
        complain(place + " is in use; choose another port with --port, or any free one with --port 0");
    else
        complain("cannot listen on " + place + ": " + error.code().message());
    return kFailed;
}

} // namespace

int main(int argc, char** argv) {
    int status = 0;
    const auto settings = parse_settings(argc, argv, status);
    if (!settings) return status;
    std::error_code error;
    if (!settings->frames.empty()) std::filesystem::create_directories(settings->frames, error);
    if (error) {
        complain("--frames: cannot make the folder " + settings->frames + ": " + error.message());
        return kUsage;
    }
    try {
        run(*settings);
        return 0;
    } catch (const std::system_error& failure) {
        return fail(*settings, failure);
    } catch (const std::exception& failure) {
        complain(failure.what());
        return kFailed;
    }
}
