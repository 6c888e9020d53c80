// What a program is made of. Numbers without a unit are the controller's own.
#pragma once

#include "values.hpp"

#include <fstream>

namespace qm {

// When and how often a program is played.
struct PlayRules {
    struct Period { // of the day; may run past midnight
        std::uint8_t start_hour = 0, start_minute = 0, start_second = 0;
        std::uint8_t end_hour = 0, end_minute = 0, end_second = 0;
    };

    std::uint8_t style = 0, priority = 0, play_times = 1;
    std::uint16_t time_span = 0;
    std::uint8_t week = 0xFF;                       // days on which it is played; 0xFF all
    std::optional<std::array<Date, 2>> life_span{}; // first and last day; else it lives for ever
    std::vector<Period> periods{};                  // at most 8; none plays at any time
};

// As a PNG file's header states it; 0 x 0 when it has none.
[[nodiscard]] inline Size png_size(const std::string& path) {
    std::array<char, 24> start{}; // signature, length and name of the first chunk, width and height
    std::ifstream(path, std::ios::binary).read(start.data(), start.size());
    if (std::string(start.data(), 8) != "\x89PNG\r\n\x1A\n") return {};
    const auto u32 = [&](std::size_t at) { // big-endian
        unsigned value = 0;
        for (std::size_t i = at; i < at + 4; ++i) value = value << 8U | static_cast<unsigned char>(start[i]);
        return value;
    };
    return {u32(16), u32(20)};
}

// A pattern that is repeated along the edges, and moves.
struct Border {
    std::string picture{}; // PNG file, at most 255 x 255; as high as the border is thick
    Size size{};           // of the picture; else as its file says
    std::uint8_t style = 0, speed = 8, step = 1;
};

// How an area of generation 6 lies over what is below.
struct AreaFlags {
    std::uint8_t background_flag = 0, transparency = 0, equal = 0;
};

// Live date, day of the week and time of day, as far as they are given.
struct DigitalClock {
    std::optional<unsigned> date{}, week{}, time{}; // DateStyle, WeekStyle, TimeStyle
    bool underline = false;
    TextStyle style{}; // its alignment is the horizontal one
};

struct ClockHand {
    std::optional<std::uint8_t> width{}, length{}; // pixels; else by the clock's size
    std::uint32_t color = eRed;                    // a palette index but for generation 6 in full colour
};

struct AnalogClock {
    std::optional<std::array<std::uint16_t, 2>> pivot{}; // in the area; else its middle
    unsigned marks = eLINE;                              // E_ClockStyle
    std::uint32_t main_color = eYellow, mark_color = eGreen, background = eBlack;
    ClockHand hour{}, minute{{}, {}, eGreen}, second{{}, {}, eYellow};
};

} // namespace qm
