// What takes turns in one place of a digital clock.
#pragma once

#include "program/text/Font.h"

namespace qm {

// Characters or words in cells of one size.
struct GlyphSet {
    int width = 0;
    int top = 0, bottom = 0;                      // of the cell around the baseline
    int left = 0, right = 0;                      // columns beside the ink that stay dark in every cell
    std::vector<std::vector<PlacedGlyph>> glyphs; // each from the left edge of its cell
    std::vector<PixelBox> bars;                   // likewise, in the place of a glyph

    [[nodiscard]] int height() const { return bottom - top; }
};

// The set of some texts, which stand in their cells as align says.
[[nodiscard]] GlyphSet set_of_texts(Font& font, const std::vector<std::u16string>& texts, Ouint8 align);

[[nodiscard]] constexpr bool is_separator(char16_t c) { return c == u':' || c == u'-' || c == u'/'; }

// The set of a character between digits: in the middle between them, and at least a column away. Where
// the font at its size leaves it without ink or lopsided, it is made of bars.
[[nodiscard]] GlyphSet set_of_separator(Font& font, char16_t c, const GlyphSet& digits);

} // namespace qm
