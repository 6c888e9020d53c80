#include "program/text/BoldFace.h"

namespace qm {

BoldFace::BoldFace(std::unique_ptr<OutlineFace> regular) : m_regular(std::move(regular)) {
    m_ascent = m_regular->ascent();
    m_lineHeight = m_regular->line_height();
}

GlyphBitmap BoldFace::load(unsigned long index) const {
    const auto [advance, ink] = m_regular->measure(index);
    const PixelBox room = ink.empty() ? ink : m_regular->room_for(ink);
    GlyphBitmap glyph(room, advance);
    if (room.empty()) return glyph.widened();
    Canvas32 drawing(room.right - room.left, room.bottom - room.top);
    cairo_set_source_rgb(drawing.context(), 1, 1, 1);
    m_regular->draw(drawing.context(), index, -room.left, -room.top);
    const auto* pixel = reinterpret_cast<const Ouint32*>(drawing.pixels());
    for (int y = room.top; y < room.bottom; ++y)
        for (int x = room.left; x < room.right; ++x)
            if (*pixel++ != 0) glyph.set(x, y);
    return glyph.widened();
}

GlyphMeasure BoldFace::measure(unsigned long index) const {
    auto [advance, ink] = m_regular->measure(index);
    if (!ink.empty()) ++ink.right;
    return {advance > 0 ? advance + 1 : 0, ink};
}

bool BoldFace::draw(cairo_t* c, unsigned long index, int x, int y) const { return load(index).draw(c, x, y); }

std::unique_ptr<Face> bold_if(bool widened, std::unique_ptr<OutlineFace> face) {
    if (widened) return std::make_unique<BoldFace>(std::move(face));
    return face;
}

} // namespace qm
