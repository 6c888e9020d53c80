// A font at a size: the shapes of its characters, measured once, and drawing with them.
#pragma once

#include "program/pixels/Surface.h"
#include "program/text/FallbackFonts.h"
#include "program/text/FontChoice.h"
#include "program/text/GlyphRuns.h"
#include "program/text/ShapingFace.h"
#include "qm_sdk_dual.h"

#include <array>
#include <map>
#include <memory>
#include <span>
#include <string>
#include <unordered_map>
#include <vector>

namespace qm {

// A larger font fills no screen, but its glyphs fill the memory.
constexpr double kMaxFontPixels = 4096;

// Half away from zero.
[[nodiscard]] double round(double r);
// Whole pixels of a size in points.
[[nodiscard]] double pixels_of_points(Ouint16 points);

// What a caller's font name stands for; one of them is empty.
struct FontNames {
    std::string family, path;
};
[[nodiscard]] FontNames font_names(const char* fontName);

// Selects the font's face (not its size) on a context and turns antialiasing off. False when its
// file could not be opened, so that the context keeps the font it has.
bool select_font(cairo_t* c, const FontChoice& choice);

// A character's glyph: what it occupies around its origin, in pixels, y downwards.
struct GlyphShape {
    unsigned long index = 0;
    unsigned face = 0; // which of the font's faces has it
    bool measured = false;
    mutable std::optional<GlyphRuns::Glyph> runs; // kept for drawing; without them cairo draws it
    int advance = 0;
    int left = 0, top = 0, right = 0, bottom = 0; // ink
    std::span<const GlyphPart> parts;             // what it is drawn of, if not of one glyph at its origin
    const GlyphShape* upright = nullptr;          // what it is when turned back
    [[nodiscard]] bool blank() const { return left >= right || top >= bottom; }
};

// Characters that are drawn together: several glyphs, or one that has its place from its neighbours.
struct ClusterShape : GlyphShape {
    std::vector<GlyphPart> glyphs;
};

// A character with its origin on the baseline.
struct PlacedGlyph {
    const GlyphShape* shape;
    int x, y;
};

class Font {
  public:
    explicit Font(const FontChoice& choice);

    // The chosen font file could not be opened; another font stands in.
    [[nodiscard]] bool is_substitute() const { return m_substitute; }
    // Whether its faces can be drawn with still; cairo gives them up when memory is exhausted.
    [[nodiscard]] bool is_sound() const;
    [[nodiscard]] int ascent() const { return m_faces.front()->ascent(); }
    [[nodiscard]] int line_height() const { return m_faces.front()->line_height(); }
    // Valid as long as the font is. A character that the font lacks comes from another font that has it.
    const GlyphShape& shape(char32_t character) {
        const auto& block = m_shapes[character >> 8U & 0xFFU];
        if (block && character <= kLastBasic) [[likely]] {
            const GlyphShape& shape = (*block)[character & 0xFFU];
            if (shape.measured) [[likely]]
                return shape;
        }
        return measure(character);
    }
    [[nodiscard]] const Face& chosen_face() const { return *m_faces.front(); }
    // The face that has the shape.
    [[nodiscard]] const Face& face_of(const GlyphShape& shape) const { return *m_faces[shape.face]; }
    // The first of the font's faces that has all of these characters; nothing when they have to be drawn one
    // by one.
    std::optional<unsigned> face_with(std::u32string_view characters);
    // The glyphs of a run of the text in a face that has its characters; valid until the next call.
    std::span<const ShapedGlyph> shape(unsigned face, std::u32string_view text, const TextRun& run) {
        return shaping_face(face).shape(text, run);
    }
    // Glyphs that were shaped, from left to right, as one shape. It is valid as long as the font is.
    std::shared_ptr<const GlyphShape> cluster(unsigned face, std::span<const ShapedGlyph> glyphs);
    // A character as it stands in a column.
    const GlyphShape& vertical(char32_t character);
    // Draws the glyphs, shifted by dx, on the context's image of 32-bit pixels: in its colour, an opaque one,
    // and inside its clip, a rectangle of whole pixels.
    void show(cairo_t* c, std::span<const PlacedGlyph> glyphs, int dx);

  private:
    using Block = std::array<GlyphShape, 256>;
    static constexpr char32_t kLastBasic = 0xFFFF; // of the Basic Multilingual Plane

    GlyphShape& kept(char32_t character);
    const GlyphShape& measure(char32_t character);
    void find_glyph(char32_t character, GlyphShape& shape);
    bool find_in(unsigned face, char32_t character, GlyphShape& shape);
    unsigned keep(std::unique_ptr<Face> face);
    unsigned preferred_face(std::size_t number);
    unsigned face_of(int fallback);
    const FallbackFonts& fallbacks();
    ShapingFace& shaping_face(unsigned face);
    bool has_all(unsigned face, std::u32string_view characters);
    std::optional<unsigned> fallback_with(std::u32string_view characters);
    std::optional<int> first_fallback(char32_t character);
    void measure_ink(ClusterShape& shape);
    void make_vertical(char32_t character, const GlyphShape& upright, ClusterShape& shape);
    void turn(char32_t character, const GlyphShape& upright, ClusterShape& shape);
    std::shared_ptr<const ClusterShape> make_cluster(unsigned face, std::span<const ShapedGlyph> glyphs);
    bool has_runs(const GlyphShape& shape);
    // Each draws the leading glyphs that have runs, or that have none, and returns how many.
    std::size_t show_runs(cairo_t* c, std::span<const PlacedGlyph> glyphs, int dx);
    std::size_t show_by_face(cairo_t* c, std::span<const PlacedGlyph> glyphs, int dx);

    FontChoice m_choice;
    bool m_substitute = false;
    std::vector<std::unique_ptr<Face>> m_faces;       // the chosen font, then those that stand in
    std::vector<const char*> m_preferred;             // families that do so first
    std::vector<unsigned> m_preferredFaces;           // of those that were asked so far
    std::shared_ptr<FallbackFonts> m_fallbacks;       // once a character is missing
    std::map<int, unsigned> m_fallbackFaces;          // by their numbers there
    std::array<std::unique_ptr<Block>, 256> m_shapes; // by the high byte of the character
    std::map<char32_t, GlyphShape> m_rareShapes;      // outside the Basic Multilingual Plane
    std::map<unsigned, std::unique_ptr<ShapingFace>> m_shapingFaces; // by the numbers of the faces
    std::unordered_map<char32_t, std::optional<int>> m_firstFallbacks;
    std::unordered_map<std::u32string, std::shared_ptr<const ClusterShape>> m_clusters;
    std::map<char32_t, ClusterShape> m_verticalShapes; // of those that look different in columns
    GlyphRuns m_runs;
};

// The font for a choice, kept for the next text that asks for it. Under the renderer's lock.
std::shared_ptr<Font> font_for(const FontChoice& choice);

} // namespace qm
