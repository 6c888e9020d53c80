// Programs as a controller keeps them.
#pragma once

#include "simulator/playback/BorderPattern.h"
#include "simulator/playback/ClockArea.h"
#include "simulator/playback/Page.h"
#include "simulator/playback/Rect.h"
#include "simulator/playback/SpokenText.h"
#include "support/controller_types.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qm::sim {

// A time of every day at which a program may be played, its first and its last second included. It may run
// past midnight.
struct PlayPeriod {
    std::chrono::seconds first{0}, last{0}; // since midnight
};

struct CalendarDay {
    std::uint16_t year = 0;
    std::uint8_t month = 0, day = 0;
};

struct ProgramHeader {
    std::string name; // 4 characters
    std::uint8_t style = 0, priority = 0, play_times = 0;
    std::uint16_t time_span = 0;
    std::uint8_t week = 0;
    CalendarDay first_day, last_day;
    std::uint16_t schedule = 0, time_attribute_offset = 0; // of generation 6
};

enum class AreaType : std::uint8_t { pictures = 0, time = 2, background = 11 };

struct ProgramArea {
    AreaType type = AreaType::pictures;
    Rect rect;
    std::optional<BorderPattern> border;
    std::uint8_t background_flag = 0, transparency = 0, equal = 0; // of generation 6
    std::optional<SpokenText> sound;                               // likewise
    std::vector<Page> pages;
    std::optional<ClockArea> clock; // of a time area, which has one page below it

    // What the border leaves.
    [[nodiscard]] Rect inside() const {
        const int edge = border ? border->thickness : 0;
        return {rect.x + edge, rect.y + edge, rect.width - 2 * edge, rect.height - 2 * edge};
    }
};

struct StoredProgram {
    Generation generation = Generation::five;
    ProgramHeader header;
    std::vector<PlayPeriod> periods; // without any, it may be played all day
    std::optional<BorderPattern> border;
    bool background = false;
    std::uint8_t area_count = 0; // as the file says: areas that were replaced while it was made count, too
    std::vector<ProgramArea> areas;
};

} // namespace qm::sim
