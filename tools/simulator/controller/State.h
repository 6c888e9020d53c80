// What the commands of a controller work on, and what follows from it at a moment.
#pragma once

#include "simulator/controller/ControllerState.h"
#include "simulator/controller/FileSystem.h"
#include "simulator/controller/Programs.h"
#include "simulator/controller/Voices.h"
#include "simulator/playback/PlayedArea.h"

#include <deque>

namespace qm::sim {

// What a controller is from the factory.
struct Model {
    std::uint16_t type = 0;
    ScreenShape screen;
    bool long_search = false; // answers the network search with the longer record

    // Bytes of pixel data that fill the screen.
    [[nodiscard]] std::size_t page() const { return pixel_data_length(screen.format, screen.whole()); }
};

// When a request came, or somebody looks.
struct Now {
    Milliseconds up{0};  // since the controller was switched on
    LocalSeconds host{}; // by the clock of its host
};

struct Stopwatch {
    bool running = false;
    Milliseconds since{0}, counted{0};

    [[nodiscard]] Milliseconds at(Milliseconds now) const {
        return running ? counted + (now - since) : counted;
    }
};

// A directory that is being listed.
struct Listing {
    std::uint8_t type = 0;
    std::size_t block_size = 0; // entries; 0: none is being listed
};

// What a locked screen goes on showing.
struct HeldScreen {
    Image image;
    std::string program; // that is on it
};

[[nodiscard]] HeldScreen dark_screen(const Model& model);

// What the commands work on.
struct State {
    explicit State(const Model& what);

    Model model;
    ControllerState settings;
    FileSystem files;
    Programs programs;
    Listing listing;
    Stopwatch stopwatch;
    Milliseconds program_locked_since{0};
    std::vector<PlayedArea> areas; // in the order in which they are drawn
    Voices voices;
    std::uint64_t dynamic_version = 0; // counts the changes of areas and voices
    std::optional<HeldScreen> held;
    std::deque<ByteBuffer> payloads; // dynamic-area commands received, most recent last
};

// The controller's own clock.
[[nodiscard]] LocalSeconds clock_of(const State& state, Now now);
[[nodiscard]] bool program_locked(const State& state, Now now);
// The moment as its programs see it.
[[nodiscard]] Moment moment_of(const State& state, Now now);
// The program whose turn it is; empty: none is due.
[[nodiscard]] std::string playing_program(const State& state, Now now);
// The program on the screen, lit or not: the one that plays, or the one that a locked screen holds.
[[nodiscard]] std::string shown_program(const State& state, Now now);
// What it plays, in full brightness and whether or not its screen is on: programs, and dynamic areas over
// them.
[[nodiscard]] Image played(const State& state, Now now);

} // namespace qm::sim
