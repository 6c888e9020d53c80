// Values as texts: a reader takes the whole text, or throws std::invalid_argument with what it expected
// instead.
#pragma once

#include "names.h"
#include "qm_sdk_dual.hpp"

#include <string_view>

namespace qm::sign {

[[noreturn]] void expected(const std::string& what);

// All of text as a number from min to max; nothing around it, no sign, no prefix.
[[nodiscard]] std::optional<unsigned> to_number(std::string_view text, unsigned min, unsigned max,
                                                int base = 10);
// The pieces of text between separators; one more than there are separators.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);

[[nodiscard]] unsigned read_number(const std::string& text, unsigned min, unsigned max);
[[nodiscard]] unsigned read_word(const std::string& text, Names names);
[[nodiscard]] unsigned read_word_or_number(const std::string& text, Names names, unsigned max);
[[nodiscard]] Align read_align(const std::string& text, Names names);
[[nodiscard]] unsigned read_type(const std::string& text);        // of a controller: 0x0262, or in decimal
[[nodiscard]] Rect read_rect(const std::string& text);            // X,Y,W,H
[[nodiscard]] std::uint32_t read_color(const std::string& text);  // a name of the palette or #RRGGBB
[[nodiscard]] std::string read_font(const std::string& text);     // a family, or a font file
[[nodiscard]] std::string read_path(const std::string& text);     // a file that can be read
[[nodiscard]] std::string read_png_path(const std::string& text); // one that begins as a PNG does
[[nodiscard]] PlayRules::Period read_period(const std::string& text); // HH:MM[:SS]-HH:MM[:SS]
[[nodiscard]] Date read_date(const std::string& text);                // YYYY-MM-DD
[[nodiscard]] Time read_moment(const std::string& text);              // YYYY-MM-DD HH:MM[:SS]

[[nodiscard]] std::string to_string(const Size& size); // 128 x 32
// What is wrong with a rectangle that is not wholly on the screen; empty when it is.
[[nodiscard]] std::string beyond(const Rect& rect, const Size& screen);

} // namespace qm::sign
