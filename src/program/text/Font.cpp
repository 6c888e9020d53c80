#include "program/text/Font.h"

#include "program/text/BoldFace.h"
#include "program/text/CairoFreeType.h"
#include "program/text/InstalledFonts.h"
#include "program/text/StrikeFace.h"
#include "program/text/encoding.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <stdexcept>

namespace qm {
namespace {

constexpr std::size_t kMaxKeptFonts = 32;

template <class Kept> using KeptByChoice = std::map<FontChoice, std::shared_ptr<Kept>>;

KeptByChoice<Font>& kept_fonts() {
    static KeptByChoice<Font> kept;
    return kept;
}

KeptByChoice<FallbackFonts>& kept_fallbacks() {
    static KeptByChoice<FallbackFonts> kept;
    return kept;
}

// Makes room for another one.
template <class Kept>
std::shared_ptr<Kept> keep(KeptByChoice<Kept>& kept, const FontChoice& choice, std::shared_ptr<Kept> made) {
    if (kept.size() >= kMaxKeptFonts) kept.clear();
    return kept.emplace(choice, std::move(made)).first->second;
}

// The same for every size.
std::shared_ptr<FallbackFonts> fallbacks_of(FontChoice choice) {
    choice.path.clear();
    choice.size = 0;
    auto& kept = kept_fallbacks();
    const auto known = kept.find(choice);
    return known != kept.end() ? known->second : keep(kept, choice, std::make_shared<FallbackFonts>(choice));
}

// What a shape is drawn of: one glyph unless it says so.
std::span<const GlyphPart> parts_of(const GlyphShape& shape, const GlyphPart& one) {
    return shape.parts.empty() ? std::span(&one, 1) : shape.parts;
}

std::unique_ptr<OutlineFace> selected_face(const FontChoice& choice, bool& substitute, bool slanted = false) {
    const Canvas32 scratch(1, 1);
    substitute = !select_font(scratch.context(), choice);
    auto face = std::make_unique<OutlineFace>(scratch.context(), choice.size, slanted);
    require_success(cairo_scaled_font_status(face->scaled_font()));
    return face;
}

std::unique_ptr<Face> file_face(const FontChoice& choice, bool& substitute) {
    std::unique_ptr<OutlineFace> outlines = selected_face(choice, substitute);
    if (substitute) {
        const InstalledFont font = installed_font({});
        outlines->set_source(font.family, font.file);
    }
    if (substitute || choice.path.empty()) return outlines;
    outlines->set_source(CairoFreeType::family_of(choice.path), choice.path);
    std::unique_ptr<Face> strike = StrikeFace::open(choice.path, 0, choice, false);
    return strike ? std::move(strike) : std::move(outlines);
}

// A family that the caller names is drawn as cairo draws it, or what cairo has in its place. Of those that
// are chosen here nothing stands in for a missing one, and a small bold is made where there is none.
std::unique_ptr<Face> family_face(FontChoice choice, bool callers = true) {
    if (auto strike = installed_strike(choice, true)) return strike;
    const InstalledFont font = installed_font(choice);
    if (font.named)
        if (auto embedded = StrikeFace::open(font.file, font.index, choice, true)) return embedded;
    if (!font.named && !callers) return nullptr;
    if (!font.named)
        if (auto strike = installed_strike(choice, false)) return strike;
    const bool widened = !callers && font.thin && BoldFace::serves(choice.size);
    choice.bold = choice.bold && !widened;
    bool substitute = false;
    return with_source(bold_if(widened, selected_face(choice, substitute, font.upright)),
                       font.named ? choice.style : font.family, font.file);
}

std::unique_ptr<Face> preferred_face_of(const char* family, FontChoice choice) {
    choice.path.clear();
    choice.style = family;
    return family_face(choice, false);
}

std::unique_ptr<Face> automatic_face(FontChoice choice) {
    for (const char* family : preferred_families(choice.size))
        if (auto face = preferred_face_of(family, choice)) return face;
    choice.style = "sans-serif";
    return family_face(choice);
}

} // namespace

double round(double r) { return r > 0 ? std::floor(r + 0.5) : std::ceil(r - 0.5); }

double pixels_of_points(Ouint16 points) { return round(points * 4.0 / 3.0); }

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

Font::Font(const FontChoice& choice) : m_choice(choice), m_preferred(preferred_families(choice.size)) {
    std::unique_ptr<Face> face;
    if (choice.style == kAutomaticFont)
        face = automatic_face(choice);
    else if (!choice.style.empty())
        face = family_face(choice);
    else
        face = file_face(choice, m_substitute);
    m_faces.push_back(std::move(face));
}

bool Font::is_sound() const {
    return std::ranges::all_of(m_faces, [](const auto& face) {
        cairo_scaled_font_t* font = face->scaled_font();
        return !font || cairo_scaled_font_status(font) == CAIRO_STATUS_SUCCESS;
    });
}

unsigned Font::keep(std::unique_ptr<Face> face) {
    if (!face) return 0;
    m_faces.push_back(std::move(face));
    return static_cast<unsigned>(m_faces.size() - 1);
}

// The number among the faces of a preferred family; 0 for one that is not there.
unsigned Font::preferred_face(std::size_t number) {
    if (number == m_preferredFaces.size())
        m_preferredFaces.push_back(keep(preferred_face_of(m_preferred[number], m_choice)));
    return m_preferredFaces[number];
}

const FallbackFonts& Font::fallbacks() {
    if (!m_fallbacks) m_fallbacks = fallbacks_of(m_choice);
    return *m_fallbacks;
}

// That of a font that stands in; 0 for one that cannot be used.
unsigned Font::face_of(int fallback) {
    if (const auto known = m_fallbackFaces.find(fallback); known != m_fallbackFaces.end())
        return known->second;
    return m_fallbackFaces.emplace(fallback, keep(m_fallbacks->open(fallback, m_choice))).first->second;
}

bool Font::find_in(unsigned face, char32_t character, GlyphShape& shape) {
    shape.index = m_faces[face]->glyph_index(character);
    shape.face = shape.index != 0 ? face : 0;
    return shape.index != 0;
}

// The chosen font's glyph, or that of the first font which stands in for it and has the character; else the
// chosen font's sign for a missing one.
void Font::find_glyph(char32_t character, GlyphShape& shape) {
    if (find_in(0, character, shape)) return;
    for (std::size_t i = 0; i < m_preferred.size(); ++i)
        if (const unsigned face = preferred_face(i); face != 0 && find_in(face, character, shape)) return;
    for (auto found = fallbacks().find(character, 0); found; found = m_fallbacks->find(character, *found + 1))
        if (const unsigned face = face_of(*found); face != 0 && find_in(face, character, shape)) return;
}

GlyphShape& Font::kept(char32_t character) {
    if (character > kLastBasic) return m_rareShapes[character];
    auto& block = m_shapes[character >> 8U];
    if (!block) block = std::make_unique<Block>();
    return (*block)[character & 0xFFU];
}

const GlyphShape& Font::measure(char32_t character) {
    GlyphShape& shape = kept(character);
    if (shape.measured) return shape;
    find_glyph(character, shape);
    const Face& face = *m_faces[shape.face];
    auto [advance, ink] = face.measure(shape.index);
    shape.advance = advance;
    if (!ink.empty()) shape.runs = m_runs.add(face, std::array{GlyphPart{shape.index}}, ink);
    shape.left = ink.left;
    shape.top = ink.top;
    shape.right = ink.right;
    shape.bottom = ink.bottom;
    shape.measured = true; // the last, for whatever failed is tried again
    return shape;
}

// False for a glyph that cairo has to draw.
bool Font::has_runs(const GlyphShape& shape) {
    if (!shape.runs || m_runs.keeps(*shape.runs)) return shape.runs.has_value();
    const GlyphPart one{shape.index};
    if (shape.upright) {
        if (!has_runs(*shape.upright)) return false;
        const PixelBox &from = shape.upright->runs->box, &to = shape.runs->box;
        shape.runs = m_runs.turned(*shape.upright->runs, to.left + from.bottom, to.top - from.left);
    } else
        shape.runs = m_runs.renew(*m_faces[shape.face], parts_of(shape, one), *shape.runs);
    return shape.runs.has_value();
}

std::size_t Font::show_runs(cairo_t* c, std::span<const PlacedGlyph> glyphs, int dx) {
    OneColour image(c);
    std::size_t count = 0;
    for (; count < glyphs.size() && has_runs(*glyphs[count].shape); ++count)
        m_runs.draw(*glyphs[count].shape->runs, glyphs[count].x + dx, glyphs[count].y, image);
    return count;
}

std::size_t Font::show_by_face(cairo_t* c, std::span<const PlacedGlyph> glyphs, int dx) {
    std::size_t count = 0;
    for (; count < glyphs.size() && !glyphs[count].shape->runs; ++count) {
        const auto& [shape, x, y] = glyphs[count];
        const GlyphPart one{shape->index};
        for (const GlyphPart& part : parts_of(*shape, one))
            m_faces[shape->face]->draw(c, part.index, x + part.x + dx, y + part.y);
    }
    return count;
}

void Font::show(cairo_t* c, std::span<const PlacedGlyph> glyphs, int dx) {
    while (!glyphs.empty())
        glyphs = glyphs.subspan(glyphs.front().shape->runs ? show_runs(c, glyphs, dx)
                                                           : show_by_face(c, glyphs, dx));
}

std::shared_ptr<Font> font_for(const FontChoice& choice) {
    auto& kept = kept_fonts();
    if (const auto known = kept.find(choice); known != kept.end()) {
        if (known->second->is_sound()) return known->second;
        kept.erase(known);
    }
    auto font = std::make_shared<Font>(choice);
    if (font->is_substitute()) return font; // asked for again, it is reported again
    return keep(kept, choice, std::move(font));
}

} // namespace qm
