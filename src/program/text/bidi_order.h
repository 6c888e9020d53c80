// The order in which a text of both directions stands (UAX 9).
#pragma once

#include "qm_sdk_dual.h"

#include <span>
#include <string_view>
#include <vector>

namespace qm {

// Even levels run from left to right, odd ones from right to left.
using Level = Ouint8;

struct ParagraphLevels {
    Level paragraph = 0;       // by its first strong character
    std::vector<Level> levels; // of the characters
};
// The paragraph contains no line end.
[[nodiscard]] ParagraphLevels embedding_levels(std::u32string_view paragraph);

// Takes the level of the paragraph at the end of a line (L1).
[[nodiscard]] bool is_bidi_space(char32_t c);

// The numbers of what has these levels, in the order in which it stands from left to right (L2).
[[nodiscard]] std::vector<Ouint32> visual_order(std::span<const Level> levels);

} // namespace qm
