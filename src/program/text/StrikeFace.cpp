#include "program/text/StrikeFace.h"

#include "support/files.h"

#include <algorithm>
#include <cmath>
#include <optional>

namespace qm {
namespace {

// Throws when memory is exhausted; whether there was another error.
bool require_memory(FT_Error error) {
    if (error == FT_Err_Out_Of_Memory) throw std::bad_alloc();
    return error != 0;
}

// Never closed: fonts are kept until the process ends.
FT_Library library() {
    static const FT_Library opened = [] {
        FT_Library made = nullptr;
        require_memory(FT_Init_FreeType(&made));
        return made;
    }();
    return opened;
}

int pixels_of(const FT_Bitmap_Size& strike) { return static_cast<int>((strike.y_ppem + 32) / 64); }

// The number of the strike that serves a size.
std::optional<int> strike_for(FT_Face face, int pixels, bool onlyExact) {
    std::optional<int> best;
    const auto suits_better = [&](int size) {
        if (!best) return true;
        const int known = pixels_of(face->available_sizes[*best]);
        return known > pixels ? size < known : size <= pixels && size > known;
    };
    for (int i = 0; i < face->num_fixed_sizes; ++i) {
        const int size = pixels_of(face->available_sizes[i]);
        if ((size == pixels || !onlyExact) && suits_better(size)) best = i;
    }
    return best;
}

} // namespace

std::unique_ptr<StrikeFace> StrikeFace::open(const std::string& path, int index, const FontChoice& choice,
                                             bool onlyExact) {
    FT_Face opened = nullptr;
    if (!is_ordinary_file(path) || require_memory(FT_New_Face(library(), path.c_str(), index, &opened)))
        return nullptr;
    FacePtr face(opened);
    const auto strike =
        strike_for(opened, static_cast<int>(std::lround(choice.size)), onlyExact || FT_IS_SCALABLE(opened));
    if (!strike || FT_HAS_COLOR(opened) || require_memory(FT_Select_Size(opened, *strike))) return nullptr;
    const int pixels = pixels_of(opened->available_sizes[*strike]);
    return std::unique_ptr<StrikeFace>(new StrikeFace(std::move(face), path, pixels, choice));
}

StrikeFace::StrikeFace(FacePtr face, const std::string& path, int strike, const FontChoice& choice)
    : m_face(std::move(face)), m_widen(choice.bold && !(m_face->style_flags & FT_STYLE_FLAG_BOLD)),
      m_slant(choice.italic && !(m_face->style_flags & FT_STYLE_FLAG_ITALIC)) {
    const FT_Size_Metrics& metrics = m_face->size->metrics;
    m_ascent = static_cast<int>(metrics.ascender / 64);
    m_lineHeight = std::max(1, static_cast<int>((metrics.ascender - metrics.descender) / 64));
    m_strike = strike;
    set_source(m_face->family_name ? m_face->family_name : "", path);
}

unsigned long StrikeFace::glyph_index(char32_t character) const {
    return FT_Get_Char_Index(m_face.get(), character);
}

GlyphBitmap StrikeFace::load(unsigned long index) const {
    GlyphBitmap glyph;
    const auto number = static_cast<FT_UInt>(index);
    if (require_memory(FT_Load_Glyph(m_face.get(), number, FT_LOAD_RENDER | FT_LOAD_TARGET_MONO)))
        return glyph;
    const FT_GlyphSlot slot = m_face->glyph;
    const FT_Bitmap& bitmap = slot->bitmap;
    const int width = static_cast<int>(bitmap.width), rows = static_cast<int>(bitmap.rows);
    glyph = GlyphBitmap(
        {slot->bitmap_left, -slot->bitmap_top, slot->bitmap_left + width, rows - slot->bitmap_top},
        std::max(0, static_cast<int>((slot->advance.x + 32) / 64)));
    for (int y = 0; y < rows; ++y) {
        const unsigned char* row = bitmap.buffer + std::ptrdiff_t{y} * bitmap.pitch;
        for (int x = 0; x < width; ++x) {
            const bool lit = bitmap.pixel_mode == FT_PIXEL_MODE_MONO   ? (row[x / 8] << x % 8 & 0x80) != 0
                             : bitmap.pixel_mode == FT_PIXEL_MODE_GRAY ? row[x] >= 128
                                                                       : false;
            if (lit) glyph.set(glyph.box().left + x, glyph.box().top + y);
        }
    }
    glyph = glyph.trimmed(); // some files have cells
    if (m_widen) glyph = glyph.widened();
    return m_slant ? glyph.slanted() : glyph;
}

GlyphMeasure StrikeFace::measure(unsigned long index) const {
    const GlyphBitmap glyph = load(index);
    return {glyph.advance(), glyph.box()};
}

PixelBox StrikeFace::room_for(const PixelBox& ink) const {
    return {ink.left - 1, ink.top - 1, ink.right + 1, ink.bottom + 1};
}

bool StrikeFace::draw(cairo_t* c, unsigned long index, int x, int y) const {
    return load(index).draw(c, x, y);
}

} // namespace qm
