// Breaks a text into lines of a width.
#pragma once

#include "program/text/ShapedText.h"

namespace qm {

// Ready for layout: line ends are '\n' or, in single-line mode, spaces; tabs are spaces; other control
// characters are gone. A letter and its mark are one character where there is one: more fonts have it.
[[nodiscard]] std::u32string clean_text(std::u32string_view text, bool singleLine);

// Lines of at most width pixels, broken where Unicode's rules allow it, and inside a word only when the word
// alone is wider. A line holds at least one character; trailing spaces are left out. The text is parted where
// a line ends inside what hangs together.
[[nodiscard]] std::vector<TextLine> break_lines(ShapedText& text, int spacing, int width);

} // namespace qm
