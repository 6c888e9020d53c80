// What fontconfig says of a font.
#pragma once

#include <fontconfig/fontconfig.h>

#include <memory>
#include <new>
#include <string>

namespace qm {

struct ReleaseFontconfig {
    void operator()(FcPattern* pattern) const { FcPatternDestroy(pattern); }
    void operator()(FcFontSet* fonts) const { FcFontSetDestroy(fonts); }
    void operator()(FcCharSet* characters) const { FcCharSetDestroy(characters); }
    void operator()(FcCache* cache) const { FcDirCacheUnload(cache); }
    void operator()(FcStrList* list) const { FcStrListDone(list); }
};
template <class T> using FontconfigPtr = std::unique_ptr<T, ReleaseFontconfig>;

// What is made of memory alone, or an exception.
[[nodiscard]] inline FontconfigPtr<FcPattern> there(FcPattern* pattern) {
    return FontconfigPtr<FcPattern>(pattern ? pattern : throw std::bad_alloc());
}

inline const FcChar8* fc(const std::string& text) { return reinterpret_cast<const FcChar8*>(text.c_str()); }

// Empty when it is not said.
inline std::string text_of(const FcPattern* pattern, const char* object) {
    FcChar8* text = nullptr;
    const bool found = FcPatternGetString(pattern, object, 0, &text) == FcResultMatch;
    return found ? reinterpret_cast<const char*>(text) : "";
}

inline int number_of(const FcPattern* pattern, const char* object, int otherwise) {
    int number = otherwise;
    FcPatternGetInteger(pattern, object, 0, &number);
    return number;
}

inline bool flag_of(const FcPattern* pattern, const char* object, bool otherwise) {
    FcBool flag = otherwise ? FcTrue : FcFalse;
    FcPatternGetBool(pattern, object, 0, &flag);
    return flag != FcFalse;
}

inline bool is_bold(const FcPattern* font) {
    return number_of(font, FC_WEIGHT, FC_WEIGHT_NORMAL) > FC_WEIGHT_MEDIUM;
}

// A match for a bold font that has no bold outlines: they would be thickened.
inline bool is_thin(const FcPattern* match) { return !is_bold(match) || flag_of(match, FC_EMBOLDEN, false); }

// A match for an italic font that has no italic outlines: how they would be slanted is said, but not done.
inline bool is_upright(const FcPattern* match) {
    FcMatrix* slant = nullptr;
    return number_of(match, FC_SLANT, FC_SLANT_ROMAN) == FC_SLANT_ROMAN ||
           FcPatternGetMatrix(match, FC_MATRIX, 0, &slant) == FcResultMatch;
}

} // namespace qm
