#include "program/Font.h"

#include "program/CairoFreeType.h"
#include "program/TextRepair.h"

#include <cairo-ft.h>

#include <cmath>
#include <map>
#include <stdexcept>

namespace qm {
namespace {

constexpr std::size_t kMaxKeptFonts = 32;

// UTF-8 of a character of the Basic Multilingual Plane.
int to_utf8(char16_t c, char out[3]) {
    const unsigned u = c;
    if (u < 0x80) {
        out[0] = static_cast<char>(u);
        return 1;
    }
    if (u < 0x800) {
        out[0] = static_cast<char>(0xC0U | u >> 6U);
        out[1] = static_cast<char>(0x80U | (u & 0x3FU));
        return 2;
    }
    out[0] = static_cast<char>(0xE0U | u >> 12U);
    out[1] = static_cast<char>(0x80U | (u >> 6U & 0x3FU));
    out[2] = static_cast<char>(0x80U | (u & 0x3FU));
    return 3;
}

// What fontconfig is asked for when a character is missing: a font that has it, in the same style.
FontFacePtr face_with(const FontChoice& choice, char16_t character) {
    FcCharSet* needed = FcCharSetCreate();
    FcCharSetAddChar(needed, character);
    FcPattern* pattern = FcPatternCreate();
    FcPatternAddCharSet(pattern, FC_CHARSET, needed);
    FcPatternAddBool(pattern, FC_SCALABLE, FcTrue);
    if (!choice.style.empty())
        FcPatternAddString(pattern, FC_FAMILY, reinterpret_cast<const FcChar8*>(choice.style.c_str()));
    if (choice.bold) FcPatternAddInteger(pattern, FC_WEIGHT, FC_WEIGHT_BOLD);
    if (choice.italic) FcPatternAddInteger(pattern, FC_SLANT, FC_SLANT_ITALIC);
    FontFacePtr face(cairo_ft_font_face_create_for_pattern(pattern));
    FcPatternDestroy(pattern);
    FcCharSetDestroy(needed);
    return face;
}

ScaledFontPtr scaled_font_of(cairo_t* c, double size) {
    cairo_set_font_size(c, size);
    return ScaledFontPtr(cairo_scaled_font_reference(cairo_get_scaled_font(c)));
}

bool usable(const ScaledFontPtr& font) {
    return cairo_scaled_font_status(font.get()) == CAIRO_STATUS_SUCCESS;
}

} // namespace

FontNames font_names(const char* fontName) {
    if (qm_is_font_file(fontName)) return {{}, fontName};
    return {repair_utf8(fontName), {}}; // cairo takes no other
}

bool select_font(cairo_t* c, const FontChoice& choice) {
    bool found = true;
    if (!choice.style.empty())
        cairo_select_font_face(c, choice.style.c_str(),
                               choice.italic ? CAIRO_FONT_SLANT_ITALIC : CAIRO_FONT_SLANT_NORMAL,
                               choice.bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    else if (!choice.path.empty())
        found = CairoFreeType::SetFont(c, choice.path, choice.bold, choice.italic);
    disable_antialias(c);
    return found;
}

Font::Font(const FontChoice& choice) : m_choice(choice) {
    const Canvas32 scratch(1, 1);
    m_substitute = !select_font(scratch.context(), choice);
    m_faces.push_back(scaled_font_of(scratch.context(), choice.size));
    if (!usable(m_faces.front())) throw std::runtime_error("font cannot be scaled");
    cairo_font_extents_t extents;
    cairo_scaled_font_extents(m_faces.front().get(), &extents);
    m_ascent = static_cast<int>(std::lround(extents.ascent));
    m_lineHeight = std::max(1, static_cast<int>(std::lround(extents.ascent + extents.descent)));
}

unsigned long Font::glyph_index(unsigned face, char16_t character) const {
    char text[3];
    const int length = to_utf8(character, text);
    cairo_glyph_t glyph{};
    cairo_glyph_t* glyphs = &glyph;
    int count = 1;
    const auto status = cairo_scaled_font_text_to_glyphs(m_faces[face].get(), 0, 0, text, length, &glyphs,
                                                         &count, nullptr, nullptr, nullptr);
    const unsigned long index = status == CAIRO_STATUS_SUCCESS && count > 0 ? glyphs[0].index : 0;
    if (glyphs != &glyph) cairo_glyph_free(glyphs);
    return index;
}

bool Font::add_fallback(char16_t character) {
    --m_searchesLeft;
    const Canvas32 scratch(1, 1);
    cairo_set_font_face(scratch.context(), face_with(m_choice, character).get());
    m_faces.push_back(scaled_font_of(scratch.context(), m_choice.size));
    const auto added = static_cast<unsigned>(m_faces.size() - 1);
    if (usable(m_faces.back()) && glyph_index(added, character) != 0) return true;
    m_faces.pop_back();
    return false;
}

// The first face that has the character, else the chosen font's sign for a missing one.
void Font::find_glyph(char16_t character, GlyphShape& shape) {
    for (unsigned face = 0; face < m_faces.size(); ++face) {
        shape = {};
        shape.face = face;
        shape.index = glyph_index(face, character);
        if (shape.index != 0) return;
    }
    shape.face = 0;
    if (m_searchesLeft == 0 || !add_fallback(character)) return;
    shape.face = static_cast<unsigned>(m_faces.size() - 1);
    shape.index = glyph_index(shape.face, character);
}

const GlyphShape& Font::measure(char16_t character) {
    auto& block = m_shapes[character >> 8U];
    if (!block) block = std::make_unique<Block>();
    GlyphShape& shape = (*block)[character & 0xFFU];
    const bool searched = m_searchesLeft > 0;
    find_glyph(character, shape);
    shape.measured = shape.index != 0 || searched; // else the next text may find it
    const cairo_glyph_t glyph{shape.index, 0, 0};
    cairo_text_extents_t extents;
    cairo_scaled_font_glyph_extents(m_faces[shape.face].get(), &glyph, 1, &extents);
    shape.advance = std::max(0, static_cast<int>(std::lround(extents.x_advance)));
    PixelBox ink{static_cast<int>(std::floor(extents.x_bearing)),
                 static_cast<int>(std::floor(extents.y_bearing)),
                 static_cast<int>(std::ceil(extents.x_bearing + extents.width)),
                 static_cast<int>(std::ceil(extents.y_bearing + extents.height))};
    if (shape.measured && !ink.empty()) shape.runs = m_runs.add(m_faces[shape.face].get(), shape.index, ink);
    shape.left = ink.left;
    shape.top = ink.top;
    shape.right = ink.right;
    shape.bottom = ink.bottom;
    return shape;
}

// False for a glyph that cairo has to draw.
bool Font::has_runs(const GlyphShape& shape) {
    if (shape.runs && !m_runs.keeps(*shape.runs))
        shape.runs = m_runs.renew(m_faces[shape.face].get(), shape.index, *shape.runs);
    return shape.runs.has_value();
}

std::size_t Font::show_runs(cairo_t* c, std::span<const PlacedGlyph> glyphs, int dx) {
    OneColour image(c);
    std::size_t count = 0;
    for (; count < glyphs.size() && has_runs(*glyphs[count].shape); ++count)
        m_runs.draw(*glyphs[count].shape->runs, glyphs[count].x + dx, glyphs[count].y, image);
    return count;
}

std::size_t Font::show_by_cairo(cairo_t* c, std::span<const PlacedGlyph> glyphs, int dx) {
    const unsigned face = glyphs.front().shape->face;
    m_cairoGlyphs.clear();
    for (const PlacedGlyph& glyph : glyphs) {
        if (glyph.shape->runs || glyph.shape->face != face) break;
        m_cairoGlyphs.push_back(
            {glyph.shape->index, static_cast<double>(glyph.x + dx), static_cast<double>(glyph.y)});
    }
    cairo_set_scaled_font(c, m_faces[face].get());
    cairo_show_glyphs(c, m_cairoGlyphs.data(), static_cast<int>(m_cairoGlyphs.size()));
    return m_cairoGlyphs.size();
}

void Font::show(cairo_t* c, std::span<const PlacedGlyph> glyphs, int dx) {
    while (!glyphs.empty())
        glyphs = glyphs.subspan(glyphs.front().shape->runs ? show_runs(c, glyphs, dx)
                                                           : show_by_cairo(c, glyphs, dx));
}

namespace {

std::map<FontChoice, std::shared_ptr<Font>>& kept_fonts() {
    static std::map<FontChoice, std::shared_ptr<Font>> kept;
    return kept;
}

} // namespace

void forget_fonts() { kept_fonts().clear(); }

std::shared_ptr<Font> font_for(const FontChoice& choice) {
    auto& kept = kept_fonts();
    if (const auto known = kept.find(choice); known != kept.end()) return known->second;
    auto font = std::make_shared<Font>(choice);
    if (font->is_substitute()) return font; // asked for again, it is reported again
    if (kept.size() >= kMaxKeptFonts) kept.clear();
    kept.emplace(choice, font);
    return font;
}

} // namespace qm
