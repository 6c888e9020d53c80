// Values as texts: a reader takes the whole text, or throws std::invalid_argument with what it expected
// instead.
#pragma once

#include "names.h"

#include <array>
#include <limits>
#include <vector>

namespace qm::options {

[[noreturn]] void expected(const std::string& what);

// The largest number of a type, or of what may be one of that type.
template <class Value> constexpr unsigned kMost = std::numeric_limits<Value>::max();
template <class Value> constexpr unsigned kMost<std::optional<Value>> = kMost<Value>;

// All of text as a number from min to max; nothing around it, no sign, no prefix.
[[nodiscard]] std::optional<unsigned> to_number(std::string_view text, unsigned min, unsigned max,
                                                int base = 10);
// The pieces of text between separators; one more than there are separators.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);

[[nodiscard]] unsigned read_number(const std::string& text, unsigned min, unsigned max);
[[nodiscard]] unsigned read_word(const std::string& text, Names names);
[[nodiscard]] unsigned read_word_or_number(const std::string& text, Names names, unsigned max);
[[nodiscard]] unsigned read_type(const std::string& text); // of a controller: 0x0262, or in decimal
// Width and height in pixels of the largest screen at most: 128x32.
[[nodiscard]] std::array<unsigned, 2> read_size(const std::string& text);
[[nodiscard]] std::string read_address(const std::string& text); // dotted IPv4
[[nodiscard]] std::string hex(unsigned value, int digits);       // 0x0262
[[nodiscard]] bool is_dotted_ipv4(const std::string& text);
[[nodiscard]] std::string read_text(const std::string& text); // any

} // namespace qm::options
