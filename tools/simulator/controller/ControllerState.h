// What a controller has been told and remembers, and what follows from it at a moment.
#pragma once

#include "simulator/controller/Voices.h"
#include "simulator/playback/Clock.h"
#include "simulator/playback/ReceivedArea.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace qm::sim {

constexpr unsigned kBrightest = 15; // brightness levels run from 0

// One period of a day in which the timer keeps the screen on. It may run past midnight.
struct OnOffTime {
    std::uint8_t on_hour = 0, on_minute = 0, off_hour = 0, off_minute = 0;
    bool operator==(const OnOffTime&) const = default;
};

enum class BrightnessMode : std::uint8_t {
    manual = 0,   // the first level, all day
    by_clock = 1, // a level for each half hour
    by_sensor = 2,
};
constexpr std::size_t kHalfHours = 48;

struct BrightnessSetting {
    BrightnessMode mode = BrightnessMode::manual;
    std::array<std::uint8_t, kHalfHours> levels{};
    BrightnessSetting() { levels.fill(kBrightest); }
    bool operator==(const BrightnessSetting&) const = default;
};

struct Lock {
    bool locked = false;
    bool nonvolatile = false; // outlives a restart
    bool operator==(const Lock&) const = default;
};

struct ProgramLock : Lock {
    std::string program;        // 4 characters
    std::uint32_t duration = 0; // seconds, 0 for no end
    bool operator==(const ProgramLock&) const = default;
};

struct Network {
    using Address = std::array<std::uint8_t, 4>;

    std::uint8_t mode = 0, server_mode = 0;
    Address ip{192, 168, 0, 199}, subnet_mask{255, 255, 255, 0}, gateway{192, 168, 0, 1}, server_ip{};
    std::uint16_t port = 5005, server_port = 0, heartbeat = 0;
    std::array<std::uint8_t, 6> mac{0x02, 0x51, 0x4D, 0x00, 0x00, 0x01};
    std::array<std::uint8_t, 8> password{};
    std::array<std::uint8_t, 12> net_id{};
    bool operator==(const Network&) const = default;
};

// What the Wi-Fi module was told.
struct WifiSetting {
    // As such modules leave the factory: not yet as the library sets them.
    std::string ssid = "qm_simulator", password = "12345678", address = "10.10.100.254";
    std::string socket = "UDPC,10.10.100.1,8899,0", mode = "1";
    std::uint32_t restarts = 0;
    bool operator==(const WifiSetting&) const = default;
};

struct ControllerState {
    std::chrono::seconds clock_offset{0}; // the controller's clock ahead of its host's
    bool switched_on = true;
    std::vector<OnOffTime> timing; // without any, the screen is on all day
    BrightnessSetting brightness;
    Lock screen_lock;
    ProgramLock program_lock;
    std::string password; // 6 bytes; empty: none is set
    std::uint16_t address = 1;
    std::uint16_t power_on_delay = 0; // seconds
    std::uint8_t button_mode = 0, display_mode = 0;
    std::int16_t speed = 0;
    std::array<std::uint8_t, 11> timing_reset{}; // as it came
    std::string firmware;                        // file that was activated; empty: the factory's
    std::string name, location;                  // from the configuration file
    Network network;
    WifiSetting wifi;
    std::uint32_t resets = 0;
    bool operator==(const ControllerState&) const = default;
};

// A dynamic area, and whether it is shown.
struct KeptArea {
    AreaSettings area;
    std::size_t pages = 0;
    bool shown = false;
};

// The state with what follows from it now.
struct Snapshot : ControllerState {
    LocalSeconds clock{};
    bool power = true; // whether the screen is lit
    unsigned brightness_level = kBrightest;
    std::uint32_t total_memory = 0, available_memory = 0; // bytes, of files
    std::string program{};                                // on the screen; empty: none
    std::map<std::string, std::string> program_errors{};  // why programs cannot be played, by their names
    std::string next_program{};                           // its turn comes then; empty: none
    std::vector<Rect> program_areas{};                    // of the program that plays
    std::vector<KeptArea> areas{};                        // in the order in which they are drawn
    std::vector<Voice> voices{};
};

// What is left of it after a restart.
[[nodiscard]] ControllerState after_restart(ControllerState state);

// By the controller's own clock.
[[nodiscard]] bool power_at(const ControllerState& state, LocalSeconds clock);
[[nodiscard]] unsigned brightness_at(const ControllerState& state, LocalSeconds clock);

} // namespace qm::sim
