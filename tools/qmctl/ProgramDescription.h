// A program as a JSON file describes it, checked as far as that is possible without knowing the screen.
#pragma once

#include "appearance.h"
#include "program_values.h"

#include <array>

namespace qm::ctl {

// A PNG file.
struct PictureFile {
    std::string where; // its field, such as border.picture
    std::string path;  // absolute
    PixelSize size;
};

struct PicturePage {
    PictureFile picture;
    Effect effect;
};

struct Border {
    PictureFile pattern; // as thick as the pattern is high
    unsigned style = 0, speed = 8, step = 1;
};

struct Background {
    std::optional<Ouint32> color;
    std::vector<PicturePage> pictures;
};

struct Sound {
    std::string text;
    unsigned voice = 0, volume = 10, speed = 5, encoding = 0, repeat = 0, delay = 0;
    unsigned digits = 0, language = 0, word_style = 0;
};

// Formats as the library numbers them; a part that is not given is not shown.
struct DigitalClock {
    std::optional<unsigned> date, week, time;
    bool underline = false;
};

struct ClockHand {
    std::string where;                     // its field, when it is given
    std::optional<unsigned> width, length; // pixels
    Ouint32 color;
};

struct AnalogClock {
    std::optional<std::array<unsigned, 2>> pivot; // else the middle of the area
    unsigned style = eLINE;
    Ouint32 main_color = eYellow, mark_color = eGreen, background = eBlack;
    std::optional<PictureFile> picture;
    ClockHand hour{"", {}, {}, eRed}, minute{"", {}, {}, eGreen}, second{"", {}, {}, eYellow};
};

struct Area {
    std::string where; // areas[0]
    unsigned id = 0;
    std::optional<Rect> rect; // else the screen inside its border
    std::string text;         // empty: none
    TextStyle style;
    Effect effect;
    std::vector<PicturePage> pictures;
    std::optional<Border> border;
    std::optional<DigitalClock> digital;                       // in place of text and pictures
    std::optional<AnalogClock> analog;                         // likewise
    std::optional<HVTimeAreaBattle_G6> battle;                 // of a clock; generation 6
    std::optional<Sound> sound;                                // generation 6
    unsigned background_flag = 0, transparency = 0, equal = 0; // generation 6

    [[nodiscard]] bool is_clock() const { return digital || analog; }
};

struct ScreenDescription {
    std::optional<unsigned> type, color;
    std::optional<PixelSize> size;
    unsigned wiring = DOUBLE_COLOR_PIXTYPE_1;
};

struct ProgramDescription {
    std::optional<unsigned> generation;
    ScreenDescription screen;
    unsigned id = 0;
    unsigned style = 0, priority = 0, play_times = 1, time_span = 0, week = 0xFF;
    std::optional<std::array<Date, 2>> life_span;
    std::vector<HVprogrampTime_G56> periods;
    std::optional<Border> border;
    std::optional<Background> background; // generation 6
    std::vector<Area> areas;
};

// Paths in the file are relative to its folder. Throws JsonError with the field and the reason.
[[nodiscard]] ProgramDescription read_program(const std::string& path);

} // namespace qm::ctl
