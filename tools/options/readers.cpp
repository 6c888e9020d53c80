#include "readers.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <charconv>
#include <cstdio>
#include <stdexcept>
#include <system_error>

namespace qm::options {

std::optional<unsigned> to_code(Names names, std::string_view word) {
    const auto found = std::ranges::find(names, word, &Name::word);
    return found == names.end() ? std::nullopt : std::optional(found->code);
}

std::string word_for(Names names, unsigned code) {
    const auto found = std::ranges::find(names, code, &Name::code);
    return found != names.end() ? found->word : "unknown (" + std::to_string(code) + ")";
}

std::string list(Names names) {
    std::vector<const char*> words;
    for (const Name& name : names) words.push_back(name.word);
    return joined(words);
}

void expected(const std::string& what) { throw std::invalid_argument("expected " + what); }

std::optional<unsigned> to_number(std::string_view text, unsigned min, unsigned max, int base) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value >= min && value <= max ? std::optional(value) : std::nullopt;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;) {
        pieces.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    pieces.push_back(text);
    return pieces;
}

unsigned read_number(const std::string& text, unsigned min, unsigned max) {
    if (const auto value = to_number(text, min, max)) return *value;
    expected("a whole number from " + std::to_string(min) + " to " + std::to_string(max));
}

std::array<unsigned, 2> read_size(const std::string& text) {
    constexpr unsigned kLongestSide = 4096;
    const auto sides = split(text, 'x');
    const auto width = sides.size() == 2 ? to_number(sides[0], 1, kLongestSide) : std::nullopt;
    const auto height = sides.size() == 2 ? to_number(sides[1], 1, kLongestSide) : std::nullopt;
    if (!width || !height) expected("WIDTHxHEIGHT with 1 to 4096 pixels each, such as 128x32");
    return {*width, *height};
}

unsigned read_word(const std::string& text, Names names) {
    if (const auto code = to_code(names, text)) return *code;
    expected("one of " + list(names));
}

unsigned read_word_or_number(const std::string& text, Names names, unsigned max) {
    if (const auto code = to_code(names, text)) return *code;
    if (const auto value = to_number(text, 0, max)) return *value;
    expected(list(names) + " or a whole number from 0 to " + std::to_string(max));
}

unsigned read_type(const std::string& text) {
    const bool hex = text.starts_with("0x") || text.starts_with("0X");
    const auto type = to_number(std::string_view(text).substr(hex ? 2 : 0), 0, 0xFFFF, hex ? 16 : 10);
    if (!type) expected("a controller type such as 0x0262");
    return *type;
}

std::string hex(unsigned value, int digits) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "0x%0*X", digits, value);
    return text.data();
}

bool is_dotted_ipv4(const std::string& text) {
    in_addr parsed{};
    return ::inet_pton(AF_INET, text.c_str(), &parsed) == 1;
}

std::string read_address(const std::string& text) {
    if (!is_dotted_ipv4(text)) expected("an IPv4 address such as 192.168.0.199");
    return text;
}

std::string read_text(const std::string& text) { return text; }

} // namespace qm::options
