// Values of the command line: a reader takes the whole text, or throws std::invalid_argument with what it
// expected instead.
#pragma once

#include "Session.h"
#include "names.h"

#include <CLI/CLI.hpp>

#include <stdexcept>
#include <string>

namespace qm::ctl {

struct Rect {
    Ouint16 x = 0, y = 0, width = 0, height = 0; // pixels
};

[[nodiscard]] unsigned read_number(const std::string& text, unsigned min, unsigned max);
[[nodiscard]] unsigned read_word(const std::string& text, Names names);
[[nodiscard]] unsigned read_word_or_number(const std::string& text, Names names, unsigned max);
[[nodiscard]] Controller read_controller(const std::string& text); // IP[:PORT]
[[nodiscard]] Rect read_rect(const std::string& text);             // X,Y,W,H
[[nodiscard]] Ouint32 read_color(const std::string& text);         // a name of the palette or #RRGGBB
[[nodiscard]] std::string read_font(const std::string& text);      // a family, or a file that can be read
[[nodiscard]] std::string read_png_path(const std::string& text);  // a file that begins as a PNG does

// Adds an option, or a positional argument when name has no dash. type is what the help shows as its value.
template <class Value, class Reader>
CLI::Option* add_value(CLI::App& command, const std::string& name, Value& value, const std::string& type,
                       const std::string& help, Reader reader) {
    const auto read = [&value, name, reader](const std::string& text) {
        try {
            value = reader(text);
        } catch (const std::invalid_argument& expected) {
            throw CLI::ValidationError(name, expected.what() + (", not '" + text + "'"));
        }
    };
    return command.add_option_function<std::string>(name, read, help)->type_name(type);
}

template <class Value>
CLI::Option* add_number(CLI::App& command, const std::string& name, Value& value, unsigned min, unsigned max,
                        const std::string& help) {
    return add_value(command, name, value, "N", help,
                     [min, max](const std::string& text) { return read_number(text, min, max); });
}

template <class Value>
CLI::Option* add_word(CLI::App& command, const std::string& name, Value& value, Names names,
                      const std::string& help) {
    return add_value(command, name, value, "WORD", help,
                     [names](const std::string& text) { return read_word(text, names); });
}

} // namespace qm::ctl
