// Characters as they stand in columns.
#include "program/text/Font.h"
#include "program/text/character_classes.h"

#include <cmath>

namespace qm {
namespace {

// Twice the height of the middle of hanzi over the baseline, y downwards.
int twice_middle(double size) { return -static_cast<int>(std::lround(0.76 * size)); }

int half(int value) { return static_cast<int>(std::floor(value / 2.)); }

} // namespace

const GlyphShape& Font::vertical(char32_t character) {
    const GlyphShape& upright = shape(character);
    if (upright.blank() || vertical_form(character) == VerticalForm::upright) return upright;
    const auto [known, isNew] = m_verticalShapes.try_emplace(character);
    if (isNew) make_vertical(character, upright, known->second);
    return known->second;
}

// The font's own glyph where it has one.
void Font::make_vertical(char32_t character, const GlyphShape& upright, ClusterShape& shape) {
    shape.face = upright.face;
    shape.index = upright.index;
    shape.advance = upright.advance;
    const auto own = shaping_face(shape.face).vertical_glyph(character);
    if (!own && vertical_form(character) == VerticalForm::turned) return turn(character, upright, shape);
    const int right =
        upright.advance - upright.left - upright.right; // from the left of its cell to the right
    const int up = twice_middle(m_choice.size) - upright.top - upright.bottom;
    if (own)
        shape.glyphs = {{*own, 0, 0}};
    else
        shape.glyphs = {{upright.index, right, std::min(up, 0)}};
    shape.parts = shape.glyphs;
    measure_ink(shape);
}

// Brackets as wide as hanzi stay in their half of the cell; all else comes into the middle of the column.
void Font::turn(char32_t character, const GlyphShape& upright, ClusterShape& shape) {
    if (!has_runs(upright)) {
        static_cast<GlyphShape&>(shape) = upright;
        return;
    }
    const bool inHalf = is_bracket(character) && upright.advance > 0.9 * m_choice.size;
    const PixelBox ink = upright.runs->box;
    const int middle = twice_middle(m_choice.size);
    shape.advance = std::max(upright.advance, ink.bottom - ink.top);
    const int right = half(shape.advance + (inHalf ? middle : ink.top + ink.bottom));
    shape.runs = m_runs.turned(*upright.runs, right, half(middle - upright.advance));
    const PixelBox& box = shape.runs->box;
    shape.left = box.left;
    shape.top = box.top;
    shape.right = box.right;
    shape.bottom = box.bottom;
    shape.upright = &upright;
}

} // namespace qm
