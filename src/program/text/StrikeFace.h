// A strike of a font: its bitmaps of one size, drawn as they are.
#pragma once

#include "program/text/Face.h"
#include "program/text/FontChoice.h"
#include "program/text/GlyphBitmap.h"

#include <ft2build.h>
#include FT_FREETYPE_H

#include <memory>

namespace qm {

class StrikeFace : public Face {
  public:
    // The strike of a file for the size, style and weight of a choice: that of exactly its pixels; in a font
    // without outlines else the next smaller one, else the smallest. Nothing when there is none, for glyphs
    // in colours of their own, and for a file that cannot be opened. What the file has not, bold and italic,
    // is made of its bitmaps.
    static std::unique_ptr<StrikeFace> open(const std::string& path, int index, const FontChoice& choice,
                                            bool onlyExact);

    [[nodiscard]] unsigned long glyph_index(char32_t character) const override;
    [[nodiscard]] GlyphMeasure measure(unsigned long index) const override;
    [[nodiscard]] PixelBox room_for(const PixelBox& ink) const override;
    bool draw(cairo_t* c, unsigned long index, int x, int y) const override;

  private:
    struct Close {
        void operator()(FT_Face face) const { FT_Done_Face(face); }
    };
    using FacePtr = std::unique_ptr<FT_FaceRec, Close>;

    StrikeFace(FacePtr face, const std::string& path, int strike, const FontChoice& choice);
    [[nodiscard]] GlyphBitmap load(unsigned long index) const;

    FacePtr m_face;
    bool m_widen, m_slant;
};

} // namespace qm
