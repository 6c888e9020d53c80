// A glyph as pixels, and what bitmap fonts always made of it: bold by doubled columns, italic by shifted
// rows.
#pragma once

#include "program/text/Face.h"

#include <vector>

namespace qm {

class GlyphBitmap {
  public:
    GlyphBitmap() = default;
    // Dark, of a size around the origin.
    GlyphBitmap(const PixelBox& box, int advance);

    [[nodiscard]] const PixelBox& box() const { return m_box; }
    [[nodiscard]] int advance() const { return m_advance; }
    [[nodiscard]] bool at(int x, int y) const; // dark outside
    void set(int x, int y);

    // Without dark rows and columns around its ink.
    [[nodiscard]] GlyphBitmap trimmed() const;
    [[nodiscard]] GlyphBitmap widened() const;
    [[nodiscard]] GlyphBitmap slanted() const;
    // In the context's colour, with its origin at x, y; false when that cannot be done.
    bool draw(cairo_t* c, int x, int y) const;

  private:
    [[nodiscard]] std::size_t offset(int x, int y) const;
    // Calls take(x, y) with every lit pixel.
    template <class Take> void each(Take take) const;

    PixelBox m_box;
    int m_advance = 0;
    std::vector<bool> m_lit;
};

} // namespace qm
