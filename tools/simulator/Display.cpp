#include "simulator/Display.h"

#include "simulator/controller/Store.h"
#include "simulator/controller/state_json.h"
#include "simulator/controller_list.h"
#include "simulator/show/picture.h"

#include <cerrno>
#include <cstdio>
#include <fstream>
#include <unistd.h>

namespace qm::sim {
namespace {

// What cannot be written is found out at the start.
void try_out(const char* option, const std::filesystem::path& file, bool has_folder) {
    if (file.empty()) return;
    std::error_code error;
    if (has_folder) std::filesystem::create_directories(file.parent_path(), error);
    const std::filesystem::path draft = file.string() + ".new";
    if (!error && !std::ofstream(draft)) error = {errno, std::generic_category()};
    if (!error && std::filesystem::is_directory(file))
        error = std::make_error_code(std::errc::is_a_directory);
    if (error)
        throw std::runtime_error(std::string(option) + ": cannot write " + file.string() + ": " +
                                 error.message());
    std::filesystem::remove(draft);
}

Image screen_of(const Device& device) {
    return device.exchange().look([](const auto& controller, Now now) { return controller.screen(now); });
}

} // namespace

Display::Display(const Settings& settings)
    : m_settings(settings), m_printer(STDOUT_FILENO, isatty(STDOUT_FILENO) == 1 && !settings.verbose) {
    const bool several = settings.controllers.size() > 1;
    for (const Options& options : settings.controllers) {
        const Outlet& outlet = m_outlets.emplace_back(outlet_of(options.name));
        try_out("--frames", outlet.frames.empty() ? outlet.frames : outlet.frames / "frame-0001.png", true);
        try_out("--screenshot", outlet.screenshot, several);
        try_out("--record", outlet.record, several);
        try_out("--json", outlet.state, several);
    }
}

// Several controllers have folders for what one has files for.
Display::Outlet Display::outlet_of(const std::string& name) const {
    if (m_settings.controllers.size() == 1)
        return {m_settings.frames, m_settings.screenshot, m_settings.record, m_settings.state, {}};
    const auto inside = [&](const std::string& folder, const char* suffix) {
        return folder.empty() ? std::filesystem::path()
                              : std::filesystem::path(folder) / (file_name_for(name) + suffix);
    };
    return {inside(m_settings.frames, ""), inside(m_settings.screenshot, ".png"),
            inside(m_settings.record, ".gif"), inside(m_settings.state, ".json"), name + ": "};
}

std::vector<Options> Display::watched() {
    std::vector<Options> controllers = m_settings.controllers;
    const bool pictures = m_settings.show || !m_settings.frames.empty() || !m_settings.screenshot.empty() ||
                          !m_settings.record.empty();
    for (std::size_t place = 0; place < controllers.size(); ++place) {
        Options& options = controllers[place];
        if (pictures) options.on_screen = [this, place](const Image& screen) { show(place, screen); };
        if (m_settings.verbose)
            options.on_request = [this, place](const std::string& line) { log(place, line); };
        if (!m_settings.state.empty())
            options.on_state = [this, place](const Snapshot& snapshot, const std::vector<StoredFile>& files) {
                keep(place, snapshot, files);
            };
        options.on_trouble = [this](const std::string& line) { complain(line); };
    }
    return controllers;
}

void Display::begin(const Fleet& fleet, const std::string& lines) {
    for (std::size_t place = 0; place < fleet.size(); ++place) {
        Outlet& outlet = m_outlets[place];
        const Image screen = screen_of(fleet.device(place));
        write_screenshot(outlet, screen);
        if (!outlet.record.empty()) begin_recording(outlet, screen);
        const auto look = [&](const auto& controller, Now now) {
            write_state(outlet, controller.snapshot(now), controller.state().files.copies());
        };
        if (!outlet.state.empty()) fleet.device(place).exchange().look(look);
    }
    m_printer.print_line(STDOUT_FILENO, lines);
}

void Display::finish(const Fleet& fleet) {
    const std::lock_guard lock(m_mutex);
    for (std::size_t place = 0; place < fleet.size(); ++place) {
        write_screenshot(m_outlets[place], screen_of(fleet.device(place)));
        finish_recording(m_outlets[place]);
    }
}

void Display::complain(const std::string& sentence) {
    m_printer.print_line(STDERR_FILENO, "qm_simulator: " + sentence);
}

void Display::show(std::size_t place, const Image& screen) {
    const std::lock_guard lock(m_mutex);
    Outlet& outlet = m_outlets[place];
    if (m_settings.show && place == 0) m_printer.print(screen);
    char name[32];
    std::snprintf(name, sizeof name, "frame-%04u.png", ++outlet.frame);
    if (!outlet.frames.empty()) write(screen, 1, outlet.frames / name);
    write_screenshot(outlet, screen);
    record(outlet, screen);
}

void Display::keep(std::size_t place, const Snapshot& snapshot, const std::vector<StoredFile>& files) {
    const std::lock_guard lock(m_mutex);
    write_state(m_outlets[place], snapshot, files);
}

void Display::log(std::size_t place, const std::string& line) {
    const std::lock_guard lock(m_mutex);
    m_printer.print_line(STDERR_FILENO, m_outlets[place].log + line);
}

void Display::write_state(const Outlet& outlet, const Snapshot& snapshot,
                          const std::vector<StoredFile>& files) try {
    const std::string text = state_text(snapshot, files);
    write_whole(outlet.state, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
} catch (const std::exception& error) {
    complain(error.what());
}

void Display::write_screenshot(Outlet& outlet, const Image& screen) {
    if (outlet.screenshot.empty() || screen == outlet.in_screenshot) return;
    if (write(screen, m_settings.scale, outlet.screenshot)) outlet.in_screenshot = screen;
}

void Display::begin_recording(Outlet& outlet, const Image& screen) {
    const auto file = std::make_shared<std::ofstream>(outlet.record, std::ios::binary);
    outlet.recording = std::make_unique<GifWriter>([file](std::span<const std::uint8_t> bytes) {
        file->write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
        return file->good();
    });
    record(outlet, screen);
}

void Display::record(Outlet& outlet, const Image& screen) try {
    if (outlet.recording)
        outlet.recording->add(std::make_shared<const Image>(screen), std::chrono::steady_clock::now());
} catch (const std::exception& error) {
    complain(outlet.record.string() + ": " + error.what());
    outlet.recording.reset();
}

void Display::finish_recording(Outlet& outlet) try {
    // Screens go on changing behind the end.
    if (const auto recording = std::move(outlet.recording))
        recording->finish(std::chrono::steady_clock::now());
} catch (const std::exception& error) {
    complain(outlet.record.string() + ": " + error.what());
}

bool Display::write(const Image& screen, int scale, const std::filesystem::path& path) try {
    write_png(led_panel(screen, scale), path);
    return true;
} catch (const std::exception& error) {
    complain(error.what());
    return false;
}

} // namespace qm::sim
