#include "program/measure.h"

#include "program/pixels/ScreenSettings.h"
#include "program/text/LineBreaker.h"
#include "program/text/TextLayout.h"
#include "program/text/character_classes.h"
#include "program/text/encoding.h"
#include "support/bytes.h"

#include <algorithm>
#include <cstring>

namespace qm {
namespace {

// Whole characters of it.
template <std::size_t size> void copy_name(char (&field)[size], const std::string& name) {
    std::size_t length = std::min(name.size(), size - 1);
    while (length < name.size() && (static_cast<unsigned char>(name[length]) & 0xC0U) == 0x80U) --length;
    std::memcpy(field, name.data(), length);
}

// What stands for a character that no font has, also in a column.
bool is_box(const GlyphShape& shape) {
    return shape.index == 0 && (shape.parts.empty() || shape.parts.front().index == 0);
}

// Missing characters, and the font that draws most of the others.
void describe_fonts(const ShapedText& text, const Font& font, qm_text_extent& extent) {
    std::map<const Face*, std::size_t> uses{{&font.chosen_face(), 0}};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t c = text.character(i);
        if (c == U'\n' || is_ignorable(c)) continue;
        const GlyphShape& shape = text.shape(i);
        if (is_box(shape) && extent.missing++ == 0) extent.firstMissing = c;
        uses[&font.face_of(shape)] += text.begin_of(i + 1) - text.begin_of(i);
    }
    const auto fewer = [](const auto& a, const auto& b) { return a.second < b.second; };
    const Face& most = *std::max_element(uses.begin(), uses.end(), fewer)->first;
    extent.strike = static_cast<Ouint16>(most.strike());
    copy_name(extent.family, most.family());
    copy_name(extent.file, most.file());
}

PixelBox ink_of(std::span<const PlacedGlyph> glyphs) {
    PixelBox ink;
    for (const auto& [shape, x, y] : glyphs) {
        const PixelBox box{x + shape->left, y + shape->top, x + shape->right, y + shape->bottom};
        ink = ink.empty() ? box
                          : PixelBox{std::min(ink.left, box.left), std::min(ink.top, box.top),
                                     std::max(ink.right, box.right), std::max(ink.bottom, box.bottom)};
    }
    return ink;
}

void include(const PixelBox& ink, qm_text_extent& extent) {
    extent.width = std::max(extent.width, static_cast<Ouint32>(ink.right - ink.left));
    extent.height = std::max(extent.height, static_cast<Ouint32>(ink.bottom - ink.top));
}

} // namespace

qm_text_extent measure_text(const char* text, const qm_text_style& style, int width, int height) {
    const auto lock = lock_renderer();
    const auto [family, path] = font_names(style.font);
    const bool bold = flag(style.bold), italic = flag(style.italic);
    const auto font =
        font_for({family, path, std::min(pixels_of_points(style.points), kMaxFontPixels), bold, italic});
    const qm_G5_G6_fontData data{style.arrMode,   style.points,  0, bold, italic,
                                 style.direction, style.spacing, 0, 0};
    const std::u32string characters = utf32_of(text);
    const Running running = running_of(style.displayMode);
    const TextPages laid = lay_out(characters, *font, data, {width, height, running});
    qm_text_extent extent{};
    extent.pages = static_cast<Ouint32>(laid.pages.size());
    describe_fonts({clean_text(characters, false), *font, data.tdirection == eVertical}, *font, extent);
    if (running != Running::no && style.arrMode == SINGLELINE) {
        include(ink_of(laid.glyphs), extent);
    } else {
        for (const TextPage& page : laid.pages)
            include(ink_of(std::span(laid.glyphs).subspan(page.first, page.count)), extent);
    }
    return extent;
}

} // namespace qm
