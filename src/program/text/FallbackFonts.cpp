#include "program/text/FallbackFonts.h"

#include "program/text/StrikeFace.h"

#include <cairo-ft.h>

namespace qm {
namespace {

struct Release {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(cairo_font_options_t* options) const { cairo_font_options_destroy(options); }
};
using PatternPtr = std::unique_ptr<FcPattern, Release>;

// What fontconfig is asked for: the choice's style, without antialiasing.
PatternPtr pattern_of(const FontChoice& choice) {
    PatternPtr pattern(FcPatternCreate());
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    if (choice.size > 0) FcPatternAddDouble(pattern.get(), FC_PIXEL_SIZE, choice.size);
    if (!choice.style.empty())
        FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(choice.style.c_str()));
    if (choice.bold) FcPatternAddInteger(pattern.get(), FC_WEIGHT, FC_WEIGHT_BOLD);
    if (choice.italic) FcPatternAddInteger(pattern.get(), FC_SLANT, FC_SLANT_ITALIC);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    const std::unique_ptr<cairo_font_options_t, Release> options(cairo_font_options_create());
    cairo_font_options_set_antialias(options.get(), CAIRO_ANTIALIAS_NONE);
    cairo_ft_font_options_substitute(options.get(), pattern.get());
    FcDefaultSubstitute(pattern.get());
    return pattern;
}

} // namespace

FallbackFonts::FallbackFonts(const FontChoice& choice) {
    FcResult result{};
    FcCharSet* characters = nullptr;
    m_fonts.reset(FcFontSort(nullptr, pattern_of(choice).get(), FcTrue, &characters, &result));
    m_characters.reset(characters);
}

std::optional<int> FallbackFonts::find(char32_t character, int from) const {
    if (!m_fonts || !m_characters || !FcCharSetHasChar(m_characters.get(), character)) return std::nullopt;
    for (int i = from; i < m_fonts->nfont; ++i) {
        FcCharSet* characters = nullptr;
        FcPatternGetCharSet(m_fonts->fonts[i], FC_CHARSET, 0, &characters);
        if (characters && FcCharSetHasChar(characters, character)) return i;
    }
    return std::nullopt;
}

std::unique_ptr<Face> FallbackFonts::open(int number, const FontChoice& choice) const {
    const PatternPtr found(FcFontRenderPrepare(nullptr, pattern_of(choice).get(), m_fonts->fonts[number]));
    FcBool scalable = FcTrue, colour = FcFalse;
    FcPatternGetBool(found.get(), FC_SCALABLE, 0, &scalable);
    FcPatternGetBool(found.get(), FC_COLOR, 0, &colour);
    FcChar8 *file = nullptr, *family = nullptr;
    int index = 0;
    FcPatternGetString(found.get(), FC_FILE, 0, &file);
    FcPatternGetString(found.get(), FC_FAMILY, 0, &family);
    FcPatternGetInteger(found.get(), FC_INDEX, 0, &index);
    if (colour || !file || !family) return nullptr;
    const std::string path = reinterpret_cast<const char*>(file);
    if (!scalable) return StrikeFace::open(path, index, choice, false);
    const Canvas32 scratch(1, 1);
    const FontFacePtr face(cairo_ft_font_face_create_for_pattern(found.get()));
    cairo_set_font_face(scratch.context(), face.get());
    auto opened = std::make_unique<OutlineFace>(scratch.context(), choice.size);
    opened->set_source(reinterpret_cast<const char*>(family), path);
    return opened->usable() ? std::move(opened) : nullptr;
}

} // namespace qm
