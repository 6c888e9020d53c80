// qm_simulator: a controller on loopback whose screen can be seen.
#include "options/readers.h"
#include "simulator/Settings.h"
#include "simulator/controller/Store.h"
#include "simulator/controller/state_json.h"
#include "simulator/playback/PixelReader.h"
#include "simulator/protocol/PixelFormat.h"
#include "simulator/show/picture.h"
#include "simulator/show/terminal.h"

#include <boost/asio/io_context.hpp>
#include <boost/asio/signal_set.hpp>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <mutex>
#include <unistd.h>

namespace {

using namespace qm::sim;
using qm::options::hex;

constexpr int kUsage = 1, kFailed = 2;

void complain(const std::string& sentence) { std::fprintf(stderr, "qm_simulator: %s\n", sentence.c_str()); }

const char* name_of(ScreenColor color) {
    constexpr const char* kNames[] = {"single colour", "double colour", "three colours", "full colour"};
    return kNames[static_cast<std::size_t>(color) - 1];
}

// Shows the screen, keeps the state and prints the log, in the ways that were asked for. What cannot be
// written is complained about and does not end the simulator. Any thread may call it.
class Display {
  public:
    explicit Display(const Settings& settings)
        : m_settings(settings), m_printer(STDOUT_FILENO, isatty(STDOUT_FILENO) == 1 && !settings.verbose) {}

    // While this is held, nothing is shown, kept or logged but by begin.
    [[nodiscard]] std::unique_lock<std::mutex> hold() { return std::unique_lock(m_mutex); }

    void show(const Image& screen) {
        const std::lock_guard lock(m_mutex);
        if (m_settings.show) m_printer.print(screen);
        if (!m_settings.frames.empty())
            write(screen, 1, std::filesystem::path(m_settings.frames) / next_frame());
        write_screenshot(screen);
    }

    // The last one.
    void finish(const Image& screen) {
        const std::lock_guard lock(m_mutex);
        write_screenshot(screen);
    }

    void keep(const Snapshot& snapshot, const std::vector<StoredFile>& files) {
        const std::lock_guard lock(m_mutex);
        write_state(snapshot, files);
    }

    void log(const std::string& line) {
        const std::lock_guard lock(m_mutex);
        m_printer.print_line(STDERR_FILENO, line);
    }

    // What there is before any change, and the line that says the controller is there. The caller holds the
    // display.
    void begin(const Simulator& simulator, const std::string& line) {
        write_screenshot(simulator.screen());
        if (!m_settings.state.empty()) write_state(simulator.state(), simulator.files());
        m_printer.print_line(STDOUT_FILENO, line);
    }

    void complain(const std::string& sentence) {
        m_printer.print_line(STDERR_FILENO, "qm_simulator: " + sentence);
    }

  private:
    void write_state(const Snapshot& snapshot, const std::vector<StoredFile>& files) try {
        const std::string text = state_text(snapshot, files);
        write_whole(m_settings.state, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
    } catch (const std::exception& error) {
        complain(error.what());
    }

    void write_screenshot(const Image& screen) {
        if (m_settings.screenshot.empty() || screen == m_in_screenshot) return;
        if (write(screen, m_settings.scale, m_settings.screenshot)) m_in_screenshot = screen;
    }

    std::string next_frame() {
        char name[32];
        std::snprintf(name, sizeof name, "frame-%04u.png", ++m_frame);
        return name;
    }

    bool write(const Image& screen, int scale, const std::filesystem::path& path) try {
        write_png(led_panel(screen, scale), path);
        return true;
    } catch (const std::exception& error) {
        complain(error.what());
        return false;
    }

    const Settings& m_settings;
    Printer m_printer;
    std::mutex m_mutex;
    unsigned m_frame = 0;
    Image m_in_screenshot;
};

std::string place(const std::string& address, std::uint16_t port) {
    return address + ":" + std::to_string(port);
}

std::string announcement(const Options& options, const Simulator& simulator) {
    std::string line = "qm_simulator ready: " + place(options.listen, simulator.port()) + ", type " +
                       hex(options.type, 4) + ", " + std::to_string(options.width) + "x" +
                       std::to_string(options.height) + ", " + name_of(options.color);
    if (options.udp) line += "\nUDP: " + place(options.udp_listen, simulator.udp_port());
    if (options.wifi) line += "\nWi-Fi module: " + place(options.udp_listen, simulator.wifi_port());
    return line;
}

// Runs until a signal or, when asked for, until the first connection that updated the screen has closed.
void run(const Settings& settings) {
    Display display(settings);
    boost::asio::io_context context;
    boost::asio::signal_set signals(context, SIGINT, SIGTERM);
    signals.async_wait([&](boost::system::error_code, int) { context.stop(); });

    Options options = settings.options;
    options.on_screen = [&](const Image& screen) { display.show(screen); };
    if (settings.verbose) options.on_request = [&](const std::string& line) { display.log(line); };
    if (!settings.state.empty())
        options.on_state = [&](const Snapshot& snapshot, const std::vector<StoredFile>& files) {
            display.keep(snapshot, files);
        };
    options.on_trouble = [&](const std::string& line) { display.complain(line); };
    if (settings.once)
        options.on_closed = [&](bool updated) {
            if (updated) context.stop();
        };
    auto held = display.hold(); // until it is said that the controller is there
    Simulator simulator(std::move(options));
    display.begin(simulator, announcement(settings.options, simulator));
    if (!goes_together({packing_of(settings.options.type), settings.options.color}))
        display.complain("a controller of type " + hex(settings.options.type, 4) + " has no pixel data for " +
                         name_of(settings.options.color) + ": areas will stay black");
    held.unlock();
    context.run();
    display.finish(simulator.screen());
}

int fail(const Settings& settings, const std::system_error& error) {
    const std::string address = place(settings.options.listen, settings.options.port);
    if (error.code() == std::errc::address_in_use)
        complain(address + " is in use; choose another port with --port, or any free one with --port 0");
    else
        complain("cannot listen on " + address + ": " + error.code().message());
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
