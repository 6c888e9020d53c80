// What characters ask of a layout beyond a glyph of their own.
#pragma once

#include <hb.h>

#include <optional>

namespace qm {

constexpr char32_t kSoftHyphen = 0xAD;

// Not drawn by a glyph of its own at the right of the one before: a mark, a joiner, a letter of a script
// whose letters change with their neighbours or run from right to left, a control of direction.
[[nodiscard]] bool needs_shaping(char32_t c);

[[nodiscard]] hb_unicode_general_category_t general_category(char32_t c);
[[nodiscard]] bool is_mark(char32_t c);
// A letter or what stands with one: joined letters are never parted.
[[nodiscard]] bool is_letter(char32_t c);
// Has no ink, whatever the font says.
[[nodiscard]] bool is_ignorable(char32_t c);
// Belongs to the character before, as a mark or as what a joiner or a virama ties to it.
[[nodiscard]] bool continues(char32_t previous, char32_t c);

// The character for one and the mark behind it, if there is one.
[[nodiscard]] std::optional<char32_t> composed(char32_t previous, char32_t c);

// How punctuation stands in a column: as in a line, turned clockwise by a right angle, or in the upper right
// of its cell. Latin letters and arrows stay upright.
enum class VerticalForm { upright, turned, raised };
[[nodiscard]] VerticalForm vertical_form(char32_t c);
[[nodiscard]] bool is_bracket(char32_t c);

} // namespace qm
