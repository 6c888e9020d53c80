// Shows screens, keeps states and prints logs, in the ways that were asked for. What cannot be written is
// complained about and does not end the simulator. Any thread may call it.
#pragma once

#include "simulator/Settings.h"
#include "simulator/device/Fleet.h"
#include "simulator/show/GifWriter.h"
#include "simulator/show/terminal.h"

#include <filesystem>
#include <mutex>

namespace qm::sim {

class Display {
  public:
    // Makes the folders that are missing. Throws std::runtime_error for what cannot be written.
    explicit Display(const Settings& settings);

    // What the controllers are to be, with callbacks that report to the display, which outlives them.
    [[nodiscard]] std::vector<Options> watched();

    // While this is held, nothing is shown, kept or logged but by begin.
    [[nodiscard]] std::unique_lock<std::mutex> hold() { return std::unique_lock(m_mutex); }
    // What there is before any change, and the lines that say the controllers are there. The caller holds the
    // display.
    void begin(const Fleet& fleet, const std::string& lines);
    // The last ones.
    void finish(const Fleet& fleet);

    void complain(const std::string& sentence);

  private:
    // Where a controller's pictures and state go; empty for nowhere.
    struct Outlet {
        std::filesystem::path frames, screenshot, record, state;
        std::string log; // in front of its lines
        unsigned frame = 0;
        Image in_screenshot{};
        std::unique_ptr<GifWriter> recording{}; // until it fails
    };

    [[nodiscard]] Outlet outlet_of(const std::string& name) const;
    void show(std::size_t place, const Image& screen);
    void keep(std::size_t place, const Snapshot& snapshot, const std::vector<StoredFile>& files);
    void log(std::size_t place, const std::string& line);
    void write_state(const Outlet& outlet, const Snapshot& snapshot, const std::vector<StoredFile>& files);
    void write_screenshot(Outlet& outlet, const Image& screen);
    void begin_recording(Outlet& outlet, const Image& screen);
    void record(Outlet& outlet, const Image& screen);
    void finish_recording(Outlet& outlet);
    bool write(const Image& screen, int scale, const std::filesystem::path& path);

    const Settings& m_settings;
    Printer m_printer;
    std::mutex m_mutex; // guards what follows
    std::vector<Outlet> m_outlets;
};

} // namespace qm::sim
