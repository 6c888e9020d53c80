#include "program/text/ShapingFace.h"

#include <cairo-ft.h>
#include <hb-ot.h>

#include <cmath>
#include <cstdlib>
#include <new>

#include FT_TRUETYPE_TABLES_H

namespace qm {

// Where the tables of a font come from.
struct ShapingFace::Tables {
    ScaledFontPtr font;
    bool lacking = false; // for want of memory
};

namespace {

// The table of a face that is locked; empty when it has none.
hb_blob_t* load_table(FT_Face face, hb_tag_t tag, bool& lacking) {
    FT_ULong length = 0;
    if (FT_Load_Sfnt_Table(face, tag, 0, nullptr, &length) != 0 || length == 0) return nullptr;
    auto* const bytes = static_cast<FT_Byte*>(std::malloc(length));
    lacking = lacking || !bytes;
    if (!bytes || FT_Load_Sfnt_Table(face, tag, 0, bytes, &length) != 0) {
        std::free(bytes);
        return nullptr;
    }
    hb_blob_t* const table =
        hb_blob_create_or_fail(reinterpret_cast<char*>(bytes), static_cast<unsigned>(length),
                               HB_MEMORY_MODE_WRITABLE, bytes, std::free);
    lacking = lacking || !table;
    return table;
}

// Cairo opens and closes the files of its faces as it likes; locked, a face is there.
template <class Tables> hb_blob_t* table_of(hb_face_t*, hb_tag_t tag, void* data) {
    auto& tables = *static_cast<Tables*>(data);
    const FT_Face face = cairo_ft_scaled_font_lock_face(tables.font.get());
    hb_blob_t* const table = face ? load_table(face, tag, tables.lacking) : nullptr;
    if (face) cairo_ft_scaled_font_unlock_face(tables.font.get());
    if (cairo_scaled_font_status(tables.font.get()) == CAIRO_STATUS_NO_MEMORY) tables.lacking = true;
    return table;
}

template <class Tables> hb_font_t* make_font(Tables* tables, double size) {
    const auto release = [](void* data) { delete static_cast<Tables*>(data); };
    hb_face_t* const face = hb_face_create_for_tables(table_of<Tables>, tables, release);
    if (face == hb_face_get_empty()) throw std::bad_alloc(); // and the tables are released
    hb_font_t* const font = hb_font_create(face);
    hb_face_destroy(face);
    const int scale = static_cast<int>(std::lround(64 * size));
    hb_font_set_scale(font, scale, scale);
    return font;
}

const Face& face_of(void* data) { return *static_cast<const Face*>(data); }

hb_bool_t find_glyph(hb_font_t*, void* face, hb_codepoint_t character, hb_codepoint_t* glyph, void*) {
    *glyph = static_cast<hb_codepoint_t>(face_of(face).glyph_index(character));
    return *glyph != 0;
}

hb_position_t advance_of(hb_font_t*, void* face, hb_codepoint_t glyph, void*) {
    return 64 * face_of(face).measure(glyph).advance;
}

// By these marks are put over and under their letters.
hb_bool_t extents_of(hb_font_t*, void* face, hb_codepoint_t glyph, hb_glyph_extents_t* extents, void*) {
    const PixelBox ink = face_of(face).measure(glyph).ink;
    *extents = {64 * ink.left, -64 * ink.top, 64 * (ink.right - ink.left), -64 * (ink.bottom - ink.top)};
    return 1;
}

hb_font_funcs_t* bitmap_functions() {
    static hb_font_funcs_t* const functions = [] {
        hb_font_funcs_t* const made = hb_font_funcs_create();
        hb_font_funcs_set_nominal_glyph_func(made, find_glyph, nullptr, nullptr);
        hb_font_funcs_set_glyph_h_advance_func(made, advance_of, nullptr, nullptr);
        hb_font_funcs_set_glyph_extents_func(made, extents_of, nullptr, nullptr);
        return made;
    }();
    return functions;
}

hb_font_t* make_bitmap_font(const Face& bitmaps, double size) {
    hb_face_t* const face = hb_face_create(hb_blob_get_empty(), 0);
    hb_font_t* const font = hb_font_create(face);
    hb_face_destroy(face);
    const int scale = static_cast<int>(std::lround(64 * size));
    hb_font_set_scale(font, scale, scale);
    hb_font_set_funcs(font, bitmap_functions(), const_cast<Face*>(&bitmaps), nullptr);
    return font;
}

} // namespace

ShapingFace::ShapingFace(const Face& face, double size)
    : m_tables(face.scaled_font() ? new Tables{ScaledFontPtr(cairo_scaled_font_reference(face.scaled_font()))}
                                  : nullptr),
      m_font(m_tables ? make_font(m_tables, size) : make_bitmap_font(face, size)),
      m_buffer(hb_buffer_create()) {
    if (m_font.get() == hb_font_get_empty()) throw std::bad_alloc();
}

bool ShapingFace::is_sound() const {
    return hb_buffer_allocation_successful(m_buffer.get()) && (!m_tables || !m_tables->lacking);
}

void ShapingFace::require_memory() const {
    if (!is_sound()) throw std::bad_alloc();
}

bool ShapingFace::has(char32_t character) const {
    hb_codepoint_t glyph = 0;
    const bool found = hb_font_get_nominal_glyph(m_font.get(), character, &glyph) != 0;
    require_memory();
    return found;
}

std::span<const ShapedGlyph> ShapingFace::shape(std::u32string_view text, const TextRun& run) {
    hb_buffer_t* const buffer = m_buffer.get();
    hb_buffer_clear_contents(buffer);
    const std::size_t offset = run.alone ? run.begin : 0;
    if (run.alone) text = text.substr(run.begin, run.end - run.begin);
    hb_buffer_add_utf32(buffer, reinterpret_cast<const std::uint32_t*>(text.data()),
                        static_cast<int>(text.size()), static_cast<unsigned>(run.begin - offset),
                        static_cast<int>(run.end - run.begin));
    hb_buffer_set_script(buffer, run.script);
    hb_buffer_set_direction(buffer, run.level % 2 == 0 ? HB_DIRECTION_LTR : HB_DIRECTION_RTL);
    const bool atBegin = run.begin == offset || text[run.begin - 1] == U'\n';
    hb_buffer_set_flags(buffer, atBegin ? HB_BUFFER_FLAG_BOT : HB_BUFFER_FLAG_DEFAULT);
    hb_shape(m_font.get(), buffer, nullptr, 0);
    require_memory();
    unsigned count = 0;
    const hb_glyph_info_t* const infos = hb_buffer_get_glyph_infos(buffer, &count);
    const hb_glyph_position_t* const positions = hb_buffer_get_glyph_positions(buffer, &count);
    m_glyphs.clear();
    for (unsigned i = 0; i < count; ++i)
        m_glyphs.push_back({infos[i].codepoint, static_cast<Ouint32>(infos[i].cluster + offset),
                            positions[i].x_advance, positions[i].x_offset, positions[i].y_offset,
                            hb_font_get_glyph_h_advance(m_font.get(), infos[i].codepoint),
                            (hb_glyph_info_get_glyph_flags(&infos[i]) & HB_GLYPH_FLAG_UNSAFE_TO_BREAK) != 0});
    return m_glyphs;
}

std::optional<Ouint32> ShapingFace::vertical_glyph(char32_t character) {
    hb_codepoint_t upright = 0;
    if (!hb_font_get_nominal_glyph(m_font.get(), character, &upright)) return std::nullopt;
    hb_buffer_t* const buffer = m_buffer.get();
    hb_buffer_clear_contents(buffer);
    hb_buffer_add(buffer, character, 0);
    hb_buffer_set_content_type(buffer, HB_BUFFER_CONTENT_TYPE_UNICODE);
    hb_buffer_set_script(buffer, HB_SCRIPT_HAN);
    hb_buffer_set_direction(buffer, HB_DIRECTION_TTB);
    hb_shape(m_font.get(), buffer, nullptr, 0);
    require_memory();
    unsigned count = 0;
    const hb_glyph_info_t* const glyphs = hb_buffer_get_glyph_infos(buffer, &count);
    if (count != 1 || glyphs->codepoint == upright) return std::nullopt;
    return glyphs->codepoint;
}

} // namespace qm
