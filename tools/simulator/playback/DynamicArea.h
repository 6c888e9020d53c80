// Dynamic areas as a controller keeps them, and the strict parsers of the payloads that bring them.
#pragma once

#include "simulator/playback/Rect.h"
#include "simulator/protocol/ErrorValue.h"
#include "support/bytes.h"

#include <cstdint>
#include <optional>
#include <variant>
#include <vector>

namespace qm::sim {

struct Page {
    std::uint8_t style = 0, display_mode = 0, clear_mode = 0, speed = 0;
    std::uint16_t stay_time = 0;
    std::uint8_t repeat_time = 0;
    std::uint16_t valid_len = 0;
    ByteBuffer pixels; // in the controller's own layout
};

struct Sound {
    std::uint8_t person = 0, volume = 0, speed = 0, data_mode = 0;
    std::uint32_t replay_times = 0, replay_delay = 0;
    std::uint8_t reserved_para_len = 0, num_deal = 0, languages = 0, word_style = 0;
    ByteBuffer text;
};

struct DynamicArea {
    std::uint8_t id = 0, run_mode = 0;
    std::uint16_t timeout = 0;
    bool with_all_programs = true;
    std::vector<std::uint16_t> programs; // numbers of the programs it is shown with, when not with all
    bool play_at_once = true;
    Rect rect;
    std::uint8_t background_flag = 0, transparency = 0, equal = 0;
    std::optional<Sound> sound;
    std::vector<Page> pages;
};

// Parses what follows the 5-byte command header of an add/update: the area count, the description of every
// area, then the page-data block. Every byte must be accounted for. Rectangles and the lengths of pixel data
// are not compared here, because the layout of pixels is the controller's.
using ParsedAreas = std::variant<std::vector<DynamicArea>, ErrorValue>;
[[nodiscard]] ParsedAreas parse_dynamic_areas(Bytes content);

// The same in the form of generation 5: one area, whose pixels follow each page record.
[[nodiscard]] ParsedAreas parse_dynamic_area_5(Bytes content);

} // namespace qm::sim
