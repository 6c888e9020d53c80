#include "program/text/FallbackFonts.h"

#include "program/text/BoldFace.h"
#include "program/text/StrikeFace.h"

#include <cairo-ft.h>

namespace qm {
namespace {

// What fontconfig is asked for: the choice's style, without antialiasing.
FontconfigPtr<FcPattern> pattern_of(const FontChoice& choice) {
    auto pattern = there(FcPatternCreate());
    FcPatternAddBool(pattern.get(), FC_SCALABLE, FcTrue);
    if (choice.size > 0) FcPatternAddDouble(pattern.get(), FC_PIXEL_SIZE, choice.size);
    if (!choice.style.empty()) FcPatternAddString(pattern.get(), FC_FAMILY, fc(choice.style));
    if (choice.bold) FcPatternAddInteger(pattern.get(), FC_WEIGHT, FC_WEIGHT_BOLD);
    if (choice.italic) FcPatternAddInteger(pattern.get(), FC_SLANT, FC_SLANT_ITALIC);
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    const std::unique_ptr<cairo_font_options_t, decltype(&cairo_font_options_destroy)> options(
        cairo_font_options_create(), cairo_font_options_destroy);
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
    const auto found = there(FcFontRenderPrepare(nullptr, pattern_of(choice).get(), m_fonts->fonts[number]));
    const std::string file = text_of(found.get(), FC_FILE), family = text_of(found.get(), FC_FAMILY);
    if (flag_of(found.get(), FC_COLOR, false) || file.empty() || family.empty()) return nullptr;
    if (!flag_of(found.get(), FC_SCALABLE, true))
        return StrikeFace::open(file, number_of(found.get(), FC_INDEX, 0), choice, false);
    const bool widened = choice.bold && is_thin(found.get()) && BoldFace::serves(choice.size);
    if (widened) FcPatternDel(found.get(), FC_EMBOLDEN);
    const bool slanted = choice.italic && is_upright(found.get());
    const Canvas32 scratch(1, 1);
    const FontFacePtr face(cairo_ft_font_face_create_for_pattern(found.get()));
    cairo_set_font_face(scratch.context(), face.get());
    auto opened = std::make_unique<OutlineFace>(scratch.context(), choice.size, slanted);
    if (!opened->usable()) return nullptr;
    return with_source(bold_if(widened, std::move(opened)), family, file);
}

} // namespace qm
