// A font at a size, as glyphs are measured and drawn with it.
#pragma once

#include "program/pixels/Surface.h"

#include <memory>
#include <string>
#include <utility>

namespace qm {

// A rectangle of pixels, right and bottom outside.
struct PixelBox {
    int left = 0, top = 0, right = 0, bottom = 0;

    [[nodiscard]] bool empty() const { return left >= right || top >= bottom; }
};

// What a glyph occupies around its origin, in pixels, y downwards.
struct GlyphMeasure {
    int advance;
    PixelBox ink;
};

class Face {
  public:
    Face() = default;
    virtual ~Face() = default;
    Face(const Face&) = delete;
    Face& operator=(const Face&) = delete;

    // 0 for a character that it lacks.
    [[nodiscard]] virtual unsigned long glyph_index(char32_t character) const = 0;
    [[nodiscard]] virtual GlyphMeasure measure(unsigned long index) const = 0;
    // Where all ink of a glyph is that measures so.
    [[nodiscard]] virtual PixelBox room_for(const PixelBox& ink) const = 0;
    // Draws a glyph with the context's colour; false when that cannot be done.
    virtual bool draw(cairo_t* c, unsigned long index, int x, int y) const = 0;

    // The font whose tables tell how its glyphs go together; nothing for bitmaps.
    [[nodiscard]] virtual cairo_scaled_font_t* scaled_font() const { return nullptr; }

    [[nodiscard]] int ascent() const { return m_ascent; }
    [[nodiscard]] int line_height() const { return m_lineHeight; }
    [[nodiscard]] int strike() const { return m_strike; } // pixels of its bitmaps; 0 for outlines

    // What it is of, as far as that is known.
    [[nodiscard]] const std::string& family() const { return m_family; }
    [[nodiscard]] const std::string& file() const { return m_file; }
    void set_source(std::string family, std::string file) {
        m_family = std::move(family);
        m_file = std::move(file);
    }

  protected:
    int m_ascent = 0, m_lineHeight = 1, m_strike = 0;

  private:
    std::string m_family, m_file;
};

[[nodiscard]] inline std::unique_ptr<Face> with_source(std::unique_ptr<Face> face, std::string family,
                                                       std::string file) {
    face->set_source(std::move(family), std::move(file));
    return face;
}

// Of cairo's.
class OutlineFace : public Face {
  public:
    // The font that is selected on a context, slanted if wanted.
    OutlineFace(cairo_t* c, double size, bool slanted = false);

    [[nodiscard]] bool usable() const;
    [[nodiscard]] cairo_scaled_font_t* scaled_font() const override { return m_font.get(); }

    [[nodiscard]] unsigned long glyph_index(char32_t character) const override;
    [[nodiscard]] GlyphMeasure measure(unsigned long index) const override;
    [[nodiscard]] PixelBox room_for(const PixelBox& ink) const override;
    bool draw(cairo_t* c, unsigned long index, int x, int y) const override;

  private:
    ScaledFontPtr m_font;
};

} // namespace qm
