#include "program/text/GlyphBitmap.h"

#include <algorithm>

namespace qm {
namespace {

constexpr int kRowsPerStep = 4; // of slanted bitmaps

} // namespace

GlyphBitmap::GlyphBitmap(const PixelBox& box, int advance)
    : m_box(box), m_advance(advance),
      m_lit(static_cast<std::size_t>(box.right - box.left) * static_cast<std::size_t>(box.bottom - box.top)) {
}

std::size_t GlyphBitmap::offset(int x, int y) const {
    return static_cast<std::size_t>((y - m_box.top) * (m_box.right - m_box.left) + x - m_box.left);
}

bool GlyphBitmap::at(int x, int y) const {
    if (x < m_box.left || x >= m_box.right || y < m_box.top || y >= m_box.bottom) return false;
    return m_lit[offset(x, y)];
}

void GlyphBitmap::set(int x, int y) { m_lit[offset(x, y)] = true; }

template <class Take> void GlyphBitmap::each(Take take) const {
    for (int y = m_box.top; y < m_box.bottom; ++y)
        for (int x = m_box.left; x < m_box.right; ++x)
            if (m_lit[offset(x, y)]) take(x, y);
}

GlyphBitmap GlyphBitmap::trimmed() const {
    PixelBox ink{m_box.right, m_box.bottom, m_box.left, m_box.top};
    each([&](int x, int y) {
        ink = {std::min(ink.left, x), std::min(ink.top, y), std::max(ink.right, x + 1),
               std::max(ink.bottom, y + 1)};
    });
    GlyphBitmap glyph(ink.empty() ? PixelBox{} : ink, m_advance);
    each([&](int x, int y) { glyph.set(x, y); });
    return glyph;
}

// Every column twice, but for what would close a gap of one column. What takes no room still does not.
GlyphBitmap GlyphBitmap::widened() const {
    GlyphBitmap bold({m_box.left, m_box.top, m_box.right + 1, m_box.bottom},
                     m_advance > 0 ? m_advance + 1 : 0);
    for (int y = m_box.top; y < m_box.bottom; ++y)
        for (int x = m_box.left; x <= m_box.right; ++x)
            if (at(x, y) || (at(x - 1, y) && !at(x + 1, y))) bold.set(x, y);
    return bold;
}

// Each few rows a whole pixel farther than those below.
GlyphBitmap GlyphBitmap::slanted() const {
    const auto shift = [](int y) {
        return y < 0 ? (kRowsPerStep - 1 - y) / kRowsPerStep - 1 : -(y / kRowsPerStep);
    };
    GlyphBitmap italic({m_box.left + std::min(0, shift(m_box.bottom - 1)), m_box.top,
                        m_box.right + std::max(0, shift(m_box.top)), m_box.bottom},
                       m_advance);
    each([&](int x, int y) { italic.set(x + shift(y), y); });
    return italic;
}

bool GlyphBitmap::draw(cairo_t* c, int x, int y) const {
    each([&](int column, int row) { cairo_rectangle(c, x + column, y + row, 1, 1); });
    cairo_fill(c);
    return cairo_status(c) == CAIRO_STATUS_SUCCESS;
}

} // namespace qm
