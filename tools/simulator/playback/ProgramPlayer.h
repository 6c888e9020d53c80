// Plays programs: what they show is a function of the time since they began and of the clock.
#pragma once

#include "simulator/playback/ScreenShape.h"
#include "simulator/playback/StoredProgram.h"
#include "simulator/playback/Timeline.h"

#include <map>
#include <memory>

namespace qm::sim {

// One program. The background comes first, then the areas in their order, each over what is below it, then
// the border of the screen. Life span, week and priority make no difference, nor does transparency.
class ProgramPlayer {
  public:
    ProgramPlayer(StoredProgram program, const ScreenShape& screen);
    ProgramPlayer(const ProgramPlayer&) = delete;
    ProgramPlayer& operator=(const ProgramPlayer&) = delete;

    [[nodiscard]] const StoredProgram& program() const { return m_program; }
    [[nodiscard]] bool plays_at(LocalSeconds clock) const;
    // How long until a play period begins or ends; nothing without periods.
    [[nodiscard]] std::optional<Milliseconds> until_period(LocalSeconds clock) const;
    // How long it takes to be played once: until its longest area has shown all pages, at least a second.
    [[nodiscard]] Milliseconds once() const;
    // What it shows regardless of periods, so long after its turn has begun; only clocks go by the moment.
    [[nodiscard]] Image picture(Milliseconds into_turn, const Moment& now) const;
    // When that is to be drawn anew, as time since its turn began; nothing when it stays for good.
    [[nodiscard]] std::optional<Milliseconds> next_picture(Milliseconds into_turn) const;

  private:
    const StoredProgram m_program;
    const ScreenShape m_screen;
    std::vector<Timeline> m_timelines; // one for every area
};

// All programs of a controller, one after the other in the order of their names. A program of style 0 plays
// ProgramPlayTimes times, any other for ProgramTimeSpan seconds; each at least once, or for a second.
// Programs outside their play periods are left out, and one that is alone is played without end.
class Playlist {
  public:
    explicit Playlist(const ScreenShape& screen) : m_screen(screen) {}

    // Takes a program in, in the place of that of the same name.
    void put(const std::string& name, StoredProgram program);
    void remove(const std::string& name) { m_players.erase(name); }

    // A locked program is shown alone, at any time of day; one that is not there leaves the screen black.
    [[nodiscard]] Image screen(const Moment& now) const;
    // Likewise as time since the programs began.
    [[nodiscard]] std::optional<Milliseconds> next_change(const Moment& now) const;
    // The name of the program that plays; empty: none.
    [[nodiscard]] std::string playing(const Moment& now) const;
    // Of the one whose turn comes then; empty: there is no other.
    [[nodiscard]] std::string next(const Moment& now) const;
    // Of the one that plays, in the order of its areas.
    [[nodiscard]] std::vector<Rect> areas(const Moment& now) const;

  private:
    using Players = std::map<std::string, std::unique_ptr<const ProgramPlayer>>;
    struct Turn {
        Players::const_iterator player;
        Milliseconds since{0};           // when it began
        std::optional<Milliseconds> end; // nothing when no other program waits
    };

    [[nodiscard]] Turn turn_at(const Moment& now) const;

    ScreenShape m_screen;
    Players m_players;
};

} // namespace qm::sim
