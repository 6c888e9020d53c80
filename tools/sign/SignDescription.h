// A sign as a JSON file describes it.
#pragma once

#include "PlayTimes.h"
#include "TimerPeriod.h"

namespace qm::sign {

// An item of the playlist.
struct PlaylistEntry {
    std::string where;                 // its field, such as playlist[2]
    std::vector<std::string> programs; // paths of descriptions; of variants, the first that fits is played
    bool has_variants = false;
    PlayTimes times; // in place of theirs
};

struct PowerWish {
    std::optional<bool> on;
    std::optional<std::vector<TimerPeriod>> timer; // none: off
};

struct ClockWish {
    std::string zone; // of the host's time zones; empty: its own
    int shift = 0;    // seconds ahead of it
};

struct SignDescription {
    std::vector<std::string> controllers; // as AddressBook finds them
    bool has_playlist = false;
    std::vector<PlaylistEntry> playlist;
    bool number = false; // the playlist's order, 1 the first, goes before the programs' own numbers
    std::string areas;   // path of a description; empty: none
    PowerWish power;
    std::optional<Brightness> brightness;
    std::optional<ClockWish> clock;
    bool prune = false; // programs that it does not name are deleted
};

} // namespace qm::sign
