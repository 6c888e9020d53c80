#include "program/text/CairoFreeType.h"

#include "program/pixels/Surface.h"
#include "support/files.h"
#include "support/message.h"

#include <cairo-ft.h>

#include <array>
#include <map>
#include <memory>
#include <new>

namespace qm {
namespace {

FT_Library FTLib = nullptr;

// A font file as cairo sees it: plain, bold, italic, both. Cairo keeps one face object for each FreeType
// face and synthesis. They are made together, and each gets its synthesis before the next one is asked for,
// since cairo would otherwise hand out a plain face that is in use already and change it for everybody.
struct CloseFace {
    void operator()(FT_Face face) const { FT_Done_Face(face); }
};
struct FontFile {
    std::unique_ptr<FT_FaceRec, CloseFace> face;
    std::array<FontFacePtr, 4> variants;
};

constexpr unsigned kBold = 1, kItalic = 2;

using FaceList = std::map<std::string, FontFile, std::less<>>;
// Not destroyed at exit: cairo may still hold fonts that were made from the faces.
FaceList& g_faceList() {
    static auto& list = *new FaceList;
    return list;
}

void make_variants(FontFile& font) {
    for (unsigned variant = 4; variant-- > 0;) {
        cairo_font_face_t* face = cairo_ft_font_face_create_for_ft_face(font.face.get(), 0);
        require_memory(cairo_font_face_status(face));
        if (variant & kBold) cairo_ft_font_face_set_synthesize(face, CAIRO_FT_SYNTHESIZE_BOLD);
        if (variant & kItalic) cairo_ft_font_face_set_synthesize(face, CAIRO_FT_SYNTHESIZE_OBLIQUE);
        font.variants[variant].reset(face);
    }
}

const FontFile* open_font(const std::string& path) {
    if (const auto known = g_faceList().find(path); known != g_faceList().end()) return &known->second;
    FT_Face face = nullptr;
    const FT_Error error =
        is_ordinary_file(path) ? FT_New_Face(FTLib, path.c_str(), 0, &face) : FT_Err_Cannot_Open_Resource;
    if (error == FT_Err_Out_Of_Memory) throw std::bad_alloc();
    if (error != 0) {
        say("Error %d opening font.\n", error);
        return nullptr;
    }
    FontFile font{decltype(FontFile::face)(face), {}};
    make_variants(font);
    return &g_faceList().emplace(path, std::move(font)).first->second;
}

} // namespace

void CairoFreeType::InitFt() {
    if (!FTLib && FT_Init_FreeType(&FTLib) != 0) throw std::bad_alloc();
}

void CairoFreeType::DestroyFt() {
    g_faceList().clear();
    FT_Done_FreeType(FTLib);
    FTLib = nullptr;
}

bool CairoFreeType::SetFont(cairo_t* c, const std::string& strFont, bool bold, bool italic) {
    InitFt();
    const FontFile* font = open_font(strFont);
    if (!font) return false;
    const unsigned variant = (bold ? kBold : 0U) | (italic ? kItalic : 0U);
    cairo_set_font_face(c, font->variants[variant].get());
    disable_antialias(c);
    return true;
}

std::string CairoFreeType::family_of(const std::string& strFont) {
    const auto known = g_faceList().find(strFont);
    const char* name = known != g_faceList().end() ? known->second.face->family_name : nullptr;
    return name ? name : "";
}

} // namespace qm
