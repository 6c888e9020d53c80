// Values of the command line, each taken by a reader (see sign/values.h).
#pragma once

#include "ArgumentList.h"
#include "Session.h"
#include "sign/values.h"

namespace qm::ctl {

inline constexpr Name kOffOn[] = {{"off", 0}, {"on", 1}};

[[nodiscard]] bool is_dotted_ipv4(const std::string& text);

[[nodiscard]] Controller read_controller(const std::string& text);                   // IP[:PORT]
[[nodiscard]] std::vector<Controller> read_controllers(const std::string& text);     // separated by commas
[[nodiscard]] std::vector<Controller> read_controller_list(const std::string& path); // a file, one a line
[[nodiscard]] std::string read_text(const std::string& text);                        // any

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

// The numbers or texts of a list in one line.
template <class Values> std::string listed(const Values& values) {
    std::string words;
    for (const auto& value : values) {
        if (!words.empty()) words += ", ";
        if constexpr (std::is_arithmetic_v<std::decay_t<decltype(value)>>)
            words += std::to_string(value);
        else
            words += value;
    }
    return words;
}

} // namespace qm::ctl
