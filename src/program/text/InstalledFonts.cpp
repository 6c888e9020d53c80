#include "program/text/InstalledFonts.h"

#include "program/text/StrikeFace.h"
#include "program/text/font_patterns.h"

#include <cmath>
#include <tuple>

namespace qm {
namespace {

// Newer systems put the foundry before the family of a bitmap font.
bool has_family(const FcPattern* pattern, const std::string& family) {
    const std::string ofFoundry = text_of(pattern, FC_FOUNDRY) + " " + family;
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(pattern, FC_FAMILY, i, &name) == FcResultMatch; ++i)
        if (FcStrCmpIgnoreCase(name, fc(family)) == 0 || FcStrCmpIgnoreCase(name, fc(ofFoundry)) == 0)
            return true;
    return false;
}

// Its bold outlines close their counters in small sizes.
constexpr char kClotsInBold[] = "Loma";

// Fonts without outlines in all folders. Lists that went through the configuration may lack them.
const std::vector<FontconfigPtr<FcPattern>>& bitmap_fonts() {
    static const auto& found = *new std::vector<FontconfigPtr<FcPattern>>([] {
        std::vector<FontconfigPtr<FcPattern>> fonts;
        const FontconfigPtr<FcStrList> folders(FcConfigGetFontDirs(nullptr));
        while (const FcChar8* folder = folders ? FcStrListNext(folders.get()) : nullptr) {
            const FontconfigPtr<FcCache> cache(FcDirCacheRead(folder, FcFalse, nullptr));
            const FontconfigPtr<FcFontSet> all(cache ? FcCacheCopySet(cache.get()) : nullptr);
            for (int i = 0; all && i < all->nfont; ++i) {
                if (!flag_of(all->fonts[i], FC_SCALABLE, true))
                    fonts.push_back(there(FcPatternDuplicate(all->fonts[i])));
            }
        }
        return fonts;
    }());
    return found;
}

unsigned characters_of(const FcPattern* font) {
    FcCharSet* characters = nullptr;
    FcPatternGetCharSet(font, FC_CHARSET, 0, &characters);
    return characters ? FcCharSetCount(characters) : 0;
}

// How far a font is from a choice; less is better.
double distance(const FcPattern* font, const FontChoice& choice) {
    double pixels = 0;
    FcPatternGetDouble(font, FC_PIXEL_SIZE, 0, &pixels);
    const double smaller = choice.size - pixels;
    const bool italic = number_of(font, FC_SLANT, FC_SLANT_ROMAN) != FC_SLANT_ROMAN;
    constexpr double kTooLarge = 1e6; // even the smallest of them
    return (smaller < 0 ? kTooLarge - smaller : smaller) + (is_bold(font) != choice.bold ? 0.2 : 0) +
           (italic != choice.italic ? 0.1 : 0);
}

// The same bitmaps may be there in several encodings, and that of most characters is Unicode; others of the
// same height in several widths.
bool suits_better(const FcPattern* font, const FcPattern* other, const FontChoice& choice) {
    const auto rank = [&](const FcPattern* one) {
        return std::tuple(distance(one, choice), -static_cast<long>(characters_of(one)),
                          text_of(one, FC_FILE));
    };
    return rank(font) < rank(other);
}

} // namespace

InstalledFont installed_font(const FontChoice& choice) {
    const auto wanted = there(FcPatternCreate());
    FcPatternAddString(wanted.get(), FC_FAMILY, fc(choice.style));
    FcPatternAddBool(wanted.get(), FC_SCALABLE, FcTrue);
    if (choice.bold) FcPatternAddInteger(wanted.get(), FC_WEIGHT, FC_WEIGHT_BOLD);
    if (choice.italic) FcPatternAddInteger(wanted.get(), FC_SLANT, FC_SLANT_ITALIC);
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result{};
    const FontconfigPtr<FcPattern> found(FcFontMatch(nullptr, wanted.get(), &result));
    if (!found) return {};
    return {text_of(found.get(), FC_FAMILY),
            text_of(found.get(), FC_FILE),
            number_of(found.get(), FC_INDEX, 0),
            has_family(found.get(), choice.style),
            choice.italic && is_upright(found.get()),
            choice.bold && (is_thin(found.get()) || choice.style == kClotsInBold)};
}

std::unique_ptr<Face> installed_strike(const FontChoice& choice, bool onlyExact) {
    const FcPattern* best = nullptr;
    for (const auto& font : bitmap_fonts())
        if (has_family(font.get(), choice.style) && (!best || suits_better(font.get(), best, choice)))
            best = font.get();
    const std::string file = best ? text_of(best, FC_FILE) : "";
    auto strike = best ? StrikeFace::open(file, number_of(best, FC_INDEX, 0), choice, onlyExact) : nullptr;
    return strike ? with_source(std::move(strike), choice.style, file) : nullptr;
}

// Go is even and tells every letter from every other one in all sizes; of 14 to 17 pixels Arimo takes less
// height, so that two lines of 16 stand in 32 rows, and from 26 on its curves are even; up to 8 no outline is
// clear. Hanzi are legible as bitmaps only up to 16 pixels.
std::vector<const char*> preferred_families(double pixels) {
    std::vector<const char*> families{
        "Go",     "Arimo", "DejaVu Sans",        "WenQuanYi Bitmap Song", "WenQuanYi Micro Hei",
        "Nakula", "Loma",  "Noto Sans Arabic UI"};
    if (pixels < 9) families.insert(families.begin(), {"Clean", "Fixed"});
    if ((pixels >= 14 && pixels < 18) || pixels >= 26) std::swap(families[0], families[1]);
    return families;
}

} // namespace qm
