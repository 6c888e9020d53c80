#include "program/text/Face.h"

#include <algorithm>
#include <cmath>

namespace qm {
namespace {

constexpr int kMargin = 2;     // around what a glyph measures
constexpr double kSlant = 0.2; // to the right, of what is above the baseline

int to_utf8(char32_t c, char out[4]) {
    if (c < 0x80) {
        out[0] = static_cast<char>(c);
        return 1;
    }
    const int length = c < 0x800 ? 2 : c < 0x10000 ? 3 : 4;
    for (int i = length; --i > 0; c >>= 6U) out[i] = static_cast<char>(0x80U | (c & 0x3FU));
    out[0] = static_cast<char>((0xF00U >> length & 0xF0U) | c);
    return length;
}

} // namespace

OutlineFace::OutlineFace(cairo_t* c, double size, bool slanted) {
    const cairo_matrix_t matrix{size, 0, slanted ? -kSlant * size : 0, size, 0, 0};
    cairo_set_font_matrix(c, &matrix);
    m_font.reset(cairo_scaled_font_reference(cairo_get_scaled_font(c)));
    require_memory(cairo_scaled_font_status(m_font.get()));
    if (!usable()) return;
    cairo_font_extents_t extents;
    cairo_scaled_font_extents(m_font.get(), &extents);
    m_ascent = static_cast<int>(std::lround(extents.ascent));
    m_lineHeight = std::max(1, static_cast<int>(std::lround(extents.ascent + extents.descent)));
}

bool OutlineFace::usable() const { return cairo_scaled_font_status(m_font.get()) == CAIRO_STATUS_SUCCESS; }

unsigned long OutlineFace::glyph_index(char32_t character) const {
    char text[4];
    const int length = to_utf8(character, text);
    cairo_glyph_t glyph{};
    cairo_glyph_t* glyphs = &glyph;
    int count = 1;
    const auto status = cairo_scaled_font_text_to_glyphs(m_font.get(), 0, 0, text, length, &glyphs, &count,
                                                         nullptr, nullptr, nullptr);
    require_memory(status);
    const unsigned long index = status == CAIRO_STATUS_SUCCESS && count > 0 ? glyphs[0].index : 0;
    if (glyphs != &glyph) cairo_glyph_free(glyphs);
    return index;
}

GlyphMeasure OutlineFace::measure(unsigned long index) const {
    const cairo_glyph_t glyph{index, 0, 0};
    cairo_text_extents_t extents;
    cairo_scaled_font_glyph_extents(m_font.get(), &glyph, 1, &extents);
    require_memory(cairo_scaled_font_status(m_font.get()));
    return {std::max(0, static_cast<int>(std::lround(extents.x_advance))),
            {static_cast<int>(std::floor(extents.x_bearing)), static_cast<int>(std::floor(extents.y_bearing)),
             static_cast<int>(std::ceil(extents.x_bearing + extents.width)),
             static_cast<int>(std::ceil(extents.y_bearing + extents.height))}};
}

// Cairo measures a glyph without its slant, and not always with all that makes it bold, which goes by the
// size of the font.
PixelBox OutlineFace::room_for(const PixelBox& ink) const {
    cairo_matrix_t size;
    cairo_scaled_font_get_font_matrix(m_font.get(), &size);
    const int bold = static_cast<int>(size.yy / 24) + kMargin;
    const int slant = std::max({-ink.top, ink.bottom, 0}) / 2;
    return {ink.left - slant - bold, ink.top - bold, ink.right + slant + bold, ink.bottom + bold};
}

bool OutlineFace::draw(cairo_t* c, unsigned long index, int x, int y) const {
    const cairo_glyph_t glyph{index, static_cast<double>(x), static_cast<double>(y)};
    cairo_set_scaled_font(c, m_font.get());
    cairo_show_glyphs(c, &glyph, 1);
    require_memory(cairo_status(c));
    return cairo_status(c) == CAIRO_STATUS_SUCCESS;
}

} // namespace qm
