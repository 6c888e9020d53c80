// A text in stretches that are shaped at once.
#pragma once

#include "program/text/bidi_order.h"

#include <hb.h>

namespace qm {

// Characters of one level and script, end outside.
struct TextRun {
    std::size_t begin, end;
    Level level;
    hb_script_t script;
    bool plain;         // each character is drawn by its own glyph
    bool alone = false; // shaped as if nothing stood beside it
};

// The runs of a part of the text, a paragraph, in the order of reading. Characters that go on and on
// belonging to the one before are cut, so that nothing that is drawn together is longer than kLongestCluster.
constexpr std::size_t kLongestCluster = 32;
[[nodiscard]] std::vector<TextRun> runs_of(std::u32string_view text, std::size_t begin,
                                           std::span<const Level> levels);

} // namespace qm
