// Values of the command line: a reader takes the whole text, or throws std::invalid_argument with what it
// expected instead.
#pragma once

#include "ArgumentList.h"
#include "Session.h"
#include "names.h"

#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace qm::ctl {

struct Rect {
    Ouint16 x = 0, y = 0, width = 0, height = 0; // pixels
};

[[noreturn]] void expected(const std::string& what);

// All of text as a number from min to max; nothing around it, no sign, no prefix.
[[nodiscard]] std::optional<unsigned> to_number(std::string_view text, unsigned min, unsigned max,
                                                int base = 10);
// The pieces of text between separators; one more than there are separators.
[[nodiscard]] std::vector<std::string_view> split(std::string_view text, char separator);

[[nodiscard]] bool is_dotted_ipv4(const std::string& text);

[[nodiscard]] unsigned read_number(const std::string& text, unsigned min, unsigned max);
[[nodiscard]] unsigned read_word(const std::string& text, Names names);
[[nodiscard]] unsigned read_word_or_number(const std::string& text, Names names, unsigned max);
[[nodiscard]] Controller read_controller(const std::string& text);                   // IP[:PORT]
[[nodiscard]] std::vector<Controller> read_controllers(const std::string& text);     // separated by commas
[[nodiscard]] std::vector<Controller> read_controller_list(const std::string& path); // a file, one a line
[[nodiscard]] Rect read_rect(const std::string& text);                               // X,Y,W,H
[[nodiscard]] Ouint32 read_color(const std::string& text);        // a name of the palette or #RRGGBB
[[nodiscard]] std::string read_font(const std::string& text);     // a family, or a font file
[[nodiscard]] std::string read_text(const std::string& text);     // any
[[nodiscard]] std::string read_path(const std::string& text);     // a file that can be read
[[nodiscard]] std::string read_png_path(const std::string& text); // one that begins as a PNG does

// Those of ArgumentList::add and add_many, for a reader that gives the value.
template <class Value, class Reader>
Argument add_value(ArgumentList& arguments, const std::string& name, Value& value, const std::string& type,
                   const std::string& help, Reader reader) {
    return arguments.add(name, type, help,
                         [&value, reader](const std::string& text) { value = reader(text); });
}
template <class Value, class Reader>
Argument add_values(ArgumentList& arguments, const std::string& name, std::vector<Value>& values, int most,
                    const std::string& help, Reader reader) {
    const auto append = [&values, reader](const std::string& text) { values.push_back(reader(text)); };
    return arguments.add_many(name, most, help, append).required();
}

template <class Value>
Argument add_number(ArgumentList& arguments, const std::string& name, Value& value, unsigned min,
                    unsigned max, const std::string& help) {
    return add_value(arguments, name, value, "N", help,
                     [min, max](const std::string& text) { return read_number(text, min, max); });
}

template <class Value>
Argument add_word(ArgumentList& arguments, const std::string& name, Value& value, Names names,
                  const std::string& help) {
    return add_value(arguments, name, value, "WORD", help,
                     [names](const std::string& text) { return read_word(text, names); });
}

} // namespace qm::ctl
