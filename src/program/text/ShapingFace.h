// A font's face as the shaper sees it.
#pragma once

#include "program/text/Face.h"
#include "program/text/text_runs.h"

#include <memory>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

namespace qm {

// A glyph in the order in which it stands, lengths in 1/64 of a pixel, y upwards.
struct ShapedGlyph {
    Ouint32 index;
    Ouint32 character; // the first one of those that it is made of
    int advance, x, y;
    int nominal; // its advance when it stands alone
    bool unsafe; // when a line breaks before the character, glyphs around have to be shaped again
};

class ShapingFace {
  public:
    // Outlines at a size in pixels, unhinted; bitmaps as they are, put together without tables. The face
    // outlives it.
    ShapingFace(const Face& face, double size);

    [[nodiscard]] bool has(char32_t character) const;
    // The glyphs of a run of the text, from left to right; valid until the next call.
    std::span<const ShapedGlyph> shape(std::u32string_view text, const TextRun& run);
    // The glyph for columns of one that has another in lines.
    std::optional<Ouint32> vertical_glyph(char32_t character);

    // Whether memory has sufficed so far; HarfBuzz keeps a table that could not be read as one that is not
    // there.
    [[nodiscard]] bool is_sound() const;

  private:
    struct Tables;
    template <auto Destroy> struct Deleter {
        template <class T> void operator()(T* object) const { Destroy(object); }
    };

    void require_memory() const;

    Tables* m_tables = nullptr; // the font's
    std::unique_ptr<hb_font_t, Deleter<hb_font_destroy>> m_font;
    std::unique_ptr<hb_buffer_t, Deleter<hb_buffer_destroy>> m_buffer;
    std::vector<ShapedGlyph> m_glyphs;
};

} // namespace qm
