// What is drawn together: faces for whole stretches of characters, and shapes of several glyphs.
#include "program/text/Font.h"
#include "program/text/character_classes.h"

#include <algorithm>
#include <cmath>

namespace qm {
namespace {

constexpr std::size_t kMostClusters = 1 << 14;   // kept by a font
constexpr std::size_t kMostCharacters = 1 << 16; // whose fallbacks are remembered

int pixels_of(int shaped) { return static_cast<int>(std::lround(shaped / 64.)); }

// Tells clusters apart that look different.
std::u32string key_of(unsigned face, std::span<const ShapedGlyph> glyphs) {
    std::u32string key(1, face);
    for (const ShapedGlyph& glyph : glyphs)
        for (const auto value : {static_cast<int>(glyph.index), glyph.advance, glyph.x, glyph.y})
            key += static_cast<char32_t>(value);
    return key;
}

// Each of the characters that a font has to have, once.
std::u32string different(std::u32string_view characters) {
    std::u32string different(characters);
    std::sort(different.begin(), different.end());
    different.erase(std::unique(different.begin(), different.end()), different.end());
    std::erase_if(different, is_ignorable);
    return different;
}

} // namespace

ShapingFace& Font::shaping_face(unsigned face) {
    std::unique_ptr<ShapingFace>& known = m_shapingFaces[face];
    if (!known || !known->is_sound()) known = std::make_unique<ShapingFace>(*m_faces[face], m_choice.size);
    return *known;
}

bool Font::has_all(unsigned face, std::u32string_view characters) {
    const ShapingFace& shaping = shaping_face(face);
    return std::all_of(characters.begin(), characters.end(), [&](char32_t c) { return shaping.has(c); });
}

std::optional<int> Font::first_fallback(char32_t character) {
    if (m_firstFallbacks.size() >= kMostCharacters) m_firstFallbacks.clear();
    if (const auto known = m_firstFallbacks.find(character); known != m_firstFallbacks.end())
        return known->second;
    return m_firstFallbacks.emplace(character, fallbacks().find(character, 0)).first->second;
}

std::optional<unsigned> Font::face_with(std::u32string_view characters) {
    const std::u32string wanted = different(characters);
    if (has_all(0, wanted)) return 0U;
    for (std::size_t i = 0; i < m_preferred.size(); ++i)
        if (const unsigned face = preferred_face(i); face != 0 && has_all(face, wanted)) return face;
    return fallback_with(wanted);
}

std::optional<unsigned> Font::fallback_with(std::u32string_view wanted) {
    if (wanted.empty()) return std::nullopt;
    int first = 0; // no font before it has all of them
    for (const char32_t c : wanted) {
        const std::optional<int> found = first_fallback(c);
        if (!found) return std::nullopt;
        first = std::max(first, *found);
    }
    const FallbackFonts& fonts = fallbacks();
    for (auto found = fonts.find(wanted[0], first); found; found = fonts.find(wanted[0], *found + 1)) {
        const auto says = [&](char32_t c) { return fonts.find(c, *found) == found; };
        if (!std::all_of(wanted.begin(), wanted.end(), says)) continue;
        const unsigned face = face_of(*found);
        if (face != 0 && has_all(face, wanted)) return face;
    }
    return std::nullopt;
}

std::shared_ptr<const GlyphShape> Font::cluster(unsigned face, std::span<const ShapedGlyph> glyphs) {
    std::u32string key = key_of(face, glyphs);
    if (const auto known = m_clusters.find(key); known != m_clusters.end()) return known->second;
    if (m_clusters.size() >= kMostClusters) m_clusters.clear(); // those in use stay with their texts
    return m_clusters.emplace(std::move(key), make_cluster(face, glyphs)).first->second;
}

// Each glyph that takes room takes as many whole pixels as cairo gives it, and what the shaper adds: hinted,
// its ink is made for that, and joined letters leave no gap. A mark stands where the shaper wants it from the
// glyph that it belongs to: the one before, from whose end it goes back, or the next one.
std::shared_ptr<const ClusterShape> Font::make_cluster(unsigned face, std::span<const ShapedGlyph> glyphs) {
    auto shape = std::make_shared<ClusterShape>();
    shape->face = face;
    int pen = 0, origin = 0; // pixels; origin: of the last glyph that takes room
    int behind = 0;          // as shaped: from there to the pen
    for (const ShapedGlyph& glyph : glyphs) {
        const bool goesBack = glyph.advance == 0 && glyph.x < 0;
        const int x = goesBack ? origin + pixels_of(behind + glyph.x) : pen + pixels_of(glyph.x);
        shape->glyphs.push_back({glyph.index, x, -pixels_of(glyph.y)});
        if (glyph.advance == 0) continue;
        origin = pen;
        behind = glyph.advance;
        pen += m_faces[face]->measure(glyph.index).advance + pixels_of(glyph.advance - glyph.nominal);
    }
    shape->advance = std::max(0, pen);
    shape->parts = shape->glyphs;
    measure_ink(*shape);
    return shape;
}

void Font::measure_ink(ClusterShape& shape) {
    const Face& face = *m_faces[shape.face];
    PixelBox ink;
    for (const GlyphPart& part : shape.glyphs) {
        const PixelBox own = face.measure(part.index).ink;
        if (own.empty()) continue;
        const PixelBox box{own.left + part.x, own.top + part.y, own.right + part.x, own.bottom + part.y};
        ink = ink.empty() ? box
                          : PixelBox{std::min(ink.left, box.left), std::min(ink.top, box.top),
                                     std::max(ink.right, box.right), std::max(ink.bottom, box.bottom)};
    }
    if (!ink.empty()) shape.runs = m_runs.add(face, shape.glyphs, ink);
    shape.left = ink.left;
    shape.top = ink.top;
    shape.right = ink.right;
    shape.bottom = ink.bottom;
}

} // namespace qm
