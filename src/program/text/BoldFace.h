// Small outlines of a family that has no bold ones, made bold as bitmaps are: thickened as outlines, their
// counters would close.
#pragma once

#include "program/text/GlyphBitmap.h"

#include <memory>

namespace qm {

class BoldFace : public Face {
  public:
    // In a larger size counters stay open anyhow.
    static bool serves(double pixels) { return pixels < 24; }

    explicit BoldFace(std::unique_ptr<OutlineFace> regular);

    [[nodiscard]] cairo_scaled_font_t* scaled_font() const override { return m_regular->scaled_font(); }
    [[nodiscard]] unsigned long glyph_index(char32_t character) const override {
        return m_regular->glyph_index(character);
    }
    [[nodiscard]] GlyphMeasure measure(unsigned long index) const override;
    [[nodiscard]] PixelBox room_for(const PixelBox& ink) const override { return m_regular->room_for(ink); }
    bool draw(cairo_t* c, unsigned long index, int x, int y) const override;

  private:
    [[nodiscard]] GlyphBitmap load(unsigned long index) const;

    std::unique_ptr<OutlineFace> m_regular;
};

// The face, or a bold one of it.
[[nodiscard]] std::unique_ptr<Face> bold_if(bool widened, std::unique_ptr<OutlineFace> face);

} // namespace qm
