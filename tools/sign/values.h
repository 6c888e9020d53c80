// Values of descriptions as texts, for readers as in options/readers.h.
#pragma once

#include "options/readers.h"
#include "qm_sdk_dual.hpp"

namespace qm::sign {

using namespace options;

static_assert(kScreenColors[0].code == SCREEN_COLOR_SINGLE &&
              kScreenColors[3].code == SCREEN_COLOR_FULLCOLOR);
constexpr unsigned kRun = 0x100; // no mode of a controller: to the side from which the text is read
inline constexpr Name kModes[] = {{"static", 1}, {"left", 4}, {"right", 38}, {"run", kRun}};
inline constexpr Name kHorizontal[] = {{"left", 0}, {"center", 1}, {"right", 2}};
inline constexpr Name kVertical[] = {{"top", 0}, {"center", 1}, {"bottom", 2}};

[[nodiscard]] unsigned read_mode(const std::string& text); // of an effect: a word or its number, or kRun
// The mode for a text: kRun becomes right when its first strong character runs from right to left, else left.
[[nodiscard]] std::uint8_t mode_for(const std::string& text, unsigned mode);
[[nodiscard]] Align read_align(const std::string& text, Names names);
[[nodiscard]] std::uint32_t read_color(const std::string& text);      // a name of the palette or #RRGGBB
[[nodiscard]] std::string read_font(const std::string& text);         // a family, or a font file
[[nodiscard]] std::string read_path(const std::string& text);         // a file that can be read
[[nodiscard]] std::string read_png_path(const std::string& text);     // one that begins as a PNG does
[[nodiscard]] PlayRules::Period read_period(const std::string& text); // HH:MM[:SS]-HH:MM[:SS]
[[nodiscard]] Date read_date(const std::string& text);                // YYYY-MM-DD
[[nodiscard]] Time read_moment(const std::string& text);              // YYYY-MM-DD HH:MM[:SS]

// HH:MM or HH:MM:SS
[[nodiscard]] std::optional<std::array<std::uint8_t, 3>> to_time(std::string_view text);
[[nodiscard]] std::string to_string(const Size& size); // 128 x 32
// What is wrong with a rectangle that is not wholly on the screen; empty when it is.
[[nodiscard]] std::string beyond(const Rect& rect, const Size& screen);

} // namespace qm::sign
