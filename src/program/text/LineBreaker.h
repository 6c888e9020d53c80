// Breaks a text into lines of a width.
#pragma once

#include "program/text/Font.h"

#include <string>
#include <string_view>

namespace qm {

struct TextLine {
    std::size_t begin, end; // characters, trailing spaces left out
};

// The room of a line: the shift that keeps its first glyph's overhang inside, and its width with it.
struct LineExtent {
    int start, width;
};

// Ready for layout: line ends are '\n' or, in single-line mode, spaces; tabs are spaces; other control
// characters are gone.
[[nodiscard]] std::u16string clean_text(std::u16string_view text, bool singleLine);

// No line reaches farther; what is left of it is not shown. Keeps positions within an int.
constexpr int kFarthestPixel = 1 << 30;

// Lines of at most width pixels, broken where Unicode's rules allow it, and inside a word only when the word
// alone is wider. A line holds at least one character.
[[nodiscard]] std::vector<TextLine> break_lines(std::u16string_view text, Font& font, int spacing, int width);

[[nodiscard]] LineExtent measure_line(std::u16string_view line, Font& font, int spacing);

} // namespace qm
