// Dynamic areas as a controller keeps them, and the strict parsers of the payloads that bring them.
#pragma once

#include "simulator/playback/Page.h"
#include "simulator/playback/Rect.h"
#include "simulator/playback/SpokenText.h"
#include "simulator/protocol/ErrorValue.h"

#include <variant>
#include <vector>

namespace qm::sim {

// All but its pages.
struct AreaSettings {
    std::uint8_t id = 0, run_mode = 0;
    std::uint16_t timeout = 0;
    bool with_all_programs = true;
    std::vector<std::uint16_t> programs; // numbers of the programs it is shown with, when not with all
    bool play_at_once = true;
    Rect rect;
    std::uint8_t background_flag = 0, transparency = 0, equal = 0;
    std::optional<SpokenText> sound;
};

struct ReceivedArea : AreaSettings {
    std::vector<Page> pages;
};

// Parses what follows the 5-byte command header of an add/update: the area count, the description of every
// area, then the page-data block. Every byte must be accounted for. Rectangles and the lengths of pixel data
// are not compared here, because the layout of pixels is the controller's.
using ParsedAreas = std::variant<std::vector<ReceivedArea>, ErrorValue>;
[[nodiscard]] ParsedAreas parse_dynamic_areas(Bytes content);

// The same in the form of generation 5: one area, whose pixels follow each page record.
[[nodiscard]] ParsedAreas parse_dynamic_area_5(Bytes content);

} // namespace qm::sim
