// Breaks a text into lines and pages and gives every character its place.
#pragma once

#include "program/text/Font.h"

#include <string_view>

namespace qm {

// How a text is set: generation 5 and 6 alike.
struct qm_G5_G6_fontData {
    Ouint32 arrMode = SINGLELINE;
    Ouint16 fontSize = 0; // points
    Ouint32 color = 0;
    bool fontBold = false, fontItalic = false;
    Ouint32 tdirection = eHorizontal;
    Ouint16 txtSpace = 0; // pixels between characters
    Ouint8 Halign = 0, Valign = 0;
};

// Which way the pages of a single line are pushed through the area, if they are.
enum class Running { no, left, right };
[[nodiscard]] Running running_of(Ouint8 displayMode);

// A single line that runs to the right is played from its end on. Its pages are laid out in the order of
// reading, for a writer that puts the last one first, or of playing, for one that keeps their order. The
// latter are full: what is missing is left dark before the beginning of the text. Pages of several lines are
// always in the order of reading.
enum class PageOrder { reading, playing };

struct LayoutFrame {
    int width, height; // of a page, pixels
    Running running;
    PageOrder order = PageOrder::reading;
};

// The pages share one list of glyphs; each shows a slice of it, moved by dx and cut at validWidth.
struct TextPage {
    std::size_t first, count;
    int dx;
    int validWidth; // right end of what the page shows
};

struct TextPages {
    std::vector<PlacedGlyph> glyphs;
    std::vector<TextPage> pages;
    int endPageLen = 0;                                    // valid width of the page that ends the text
    std::vector<std::shared_ptr<const GlyphShape>> shapes; // that only these pages may still need
};

// The most pages: their number has 16 bits in a file.
constexpr std::size_t kMostPages = 0xFFFF;

// The glyphs refer to the font's shapes, and to those of the pages.
TextPages lay_out(std::u32string_view text, Font& font, const qm_G5_G6_fontData& style,
                  const LayoutFrame& frame);

} // namespace qm
