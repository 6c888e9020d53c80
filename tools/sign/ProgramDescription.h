// A program as a JSON file describes it, checked as far as that is possible without knowing the screen.
#pragma once

#include "PictureFit.h"

namespace qm::sign {

// A PNG file, unless something else is said.
struct PictureFile {
    std::string where; // its field, such as border.picture
    std::string path;  // absolute, when it is a description's
    Size size;         // of a PNG file
};

struct PicturePage {
    PictureFile picture; // of any kind
    Effect effect;
    PictureFit fit;
};

struct PatternBorder : Border {
    std::string where; // the field of its picture
};

struct Background {
    std::optional<std::uint32_t> color;
    std::vector<PicturePage> pictures;
};

struct ClockFace : AnalogClock {
    std::optional<PictureFile> dial;
    std::array<std::string, 3> hands; // the fields of hour, minute and second, when they are given
};

struct AreaDescription {
    std::string where; // areas[0]
    unsigned id = 0;
    std::optional<Rect> rect; // else the screen inside its border
    std::string text;         // empty: none
    TextStyle style;
    Effect effect;
    std::vector<PicturePage> pictures;
    std::optional<PatternBorder> border;
    std::optional<DigitalClock> digital; // in place of text and pictures
    std::optional<ClockFace> analog;     // likewise
    std::optional<Time> battle;          // of a clock; generation 6
    std::optional<Speech> speech;        // generation 6
    AreaFlags flags;                     // generation 6

    [[nodiscard]] bool is_clock() const { return digital || analog; }
};

struct ScreenDescription {
    std::optional<unsigned> type, color;
    std::optional<Size> size;
    unsigned wiring = DOUBLE_COLOR_PIXTYPE_1;
};

struct ProgramDescription {
    std::optional<unsigned> generation;
    ScreenDescription screen;
    unsigned id = 0;
    PlayRules rules;
    std::optional<PatternBorder> border;
    std::optional<Background> background; // generation 6
    std::vector<AreaDescription> areas;
};

} // namespace qm::sign
