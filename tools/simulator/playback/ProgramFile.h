// Programs as a controller keeps them, and the strict parser of the files that bring them.
#pragma once

#include "simulator/playback/ClockArea.h"
#include "simulator/playback/DynamicArea.h"
#include "simulator/playback/PixelData.h"
#include "simulator/protocol/Series.h"

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <variant>
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
    std::uint8_t file_type = 0;
    std::string name; // 4 characters
    std::uint8_t style = 0, priority = 0, play_times = 0;
    std::uint16_t time_span = 0;
    std::uint8_t week = 0;
    CalendarDay first_day, last_day;
    // Of generation 6.
    std::uint8_t special_flag = 0, extended_length = 0;
    std::uint16_t schedule = 0, loop_value = 0;
    std::uint8_t integrate = 0, time_attributes = 0;
    std::uint16_t time_attribute_offset = 0;
};

// A pattern that is repeated along the edges of an area or of the screen.
struct Border {
    std::uint8_t style = 0, speed = 0, move_step = 0;
    std::uint8_t unit_length = 0, unit_width = 0, direct_bit = 0; // as the file says; 0 where it does not
    int length = 0, thickness = 0;                                // of the pattern, in pixels
    ByteBuffer pixels;
};

enum class AreaType : std::uint8_t { pictures = 0, time = 2, background = 11 };

struct ProgramArea {
    AreaType type = AreaType::pictures;
    Rect rect;
    std::optional<Border> border;
    std::uint8_t background_flag = 0, transparency = 0, equal = 0; // of generation 6
    std::optional<Sound> sound;                                    // likewise
    std::vector<Page> pages;
    std::optional<ClockArea> clock; // of a time area, which has one page below it

    // What the border leaves.
    [[nodiscard]] Rect inside() const;
};

struct Program {
    Generation generation = Generation::five;
    ProgramHeader header;
    std::vector<PlayPeriod> periods; // without any, it may be played all day
    std::optional<Border> border;
    bool background = false;
    std::uint8_t area_count = 0; // as the file says: areas that were replaced while it was made count, too
    std::vector<ProgramArea> areas;
};

// A program, or why its file is refused: which field of which byte, and what was expected.
using ParsedProgram = std::variant<Program, std::string>;

// The program file of generation 5, for a screen whose pixels are laid out so. Every byte must be accounted
// for. Two numbers are not in the file, and are found by what parses to the last byte:
//
//   play periods   1 to 8; the most with which the rest parses, for the start of a border reads like a period
//                  more often than a period like the start of a border
//   border pixels  as many whole groups of pixels as the rest leaves. The pattern of an area is as thick as
//                  the edges that its pages leave free; that of the screen as the header says, where that
//                  divides the pixels, else 1 pixel. Its length is what follows, padding included, or what
//                  the header says (FrameUnitLength, AreaFWidth) where that differs by the padding alone.
//
// A border whose flag is 0 reads as none. Where a screen border is followed by nothing but an area count, it
// cannot be told from one that is cut short: only the CRC guards against that.
[[nodiscard]] ParsedProgram parse_program(Bytes file, PixelFormat format);

// The program file and the data file of generation 6.
[[nodiscard]] ParsedProgram parse_program(Bytes file, Bytes data, PixelFormat format);

} // namespace qm::sim
