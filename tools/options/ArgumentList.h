// What a command takes from its command line. Keeps the parser, whose header takes long to compile, out of
// those that use it.
#pragma once

#include "readers.h"

#include <functional>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace qm::options {

class Argument {
  public:
    explicit Argument(CLI::Option* option) : m_option(option) {}

    Argument& required();
    Argument& excludes(const Argument& other);
    Argument& needs(const Argument& other);

  private:
    CLI::Option* m_option;
};

// An argument as the parser is to get it, which would take brackets around it for a list of its own; and as
// it was typed.
[[nodiscard]] std::string guarded(const std::string& typed);
[[nodiscard]] std::string typed(const std::string& guarded);

// A name with a dash is an option's, any other a positional argument's.
class ArgumentList {
  public:
    explicit ArgumentList(CLI::App& command) : m_command(command) {}

    // Takes the text that was given, or throws std::invalid_argument with what was expected instead.
    using Take = std::function<void(const std::string& text)>;

    // type is what the help shows as the value.
    Argument add(const std::string& name, const std::string& type, const std::string& help, const Take& take);
    // One that is given one to most times.
    Argument add_many(const std::string& name, int most, const std::string& help, const Take& take);
    Argument add_flag(const std::string& name, const std::string& help, const std::function<void()>& given);
    Argument add_flag(const std::string& name, bool& given, const std::string& help);

  private:
    CLI::App& m_command;
};

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
    return arguments.add(name, "N", help, [&value, min, max](const std::string& text) {
        value = static_cast<Value>(read_number(text, min, max));
    });
}

// One from 0 to the most that the value holds.
template <class Value>
Argument add_number(ArgumentList& arguments, const std::string& name, Value& value, const std::string& help) {
    return add_number(arguments, name, value, 0, kMost<Value>, help);
}

template <class Value>
Argument add_word(ArgumentList& arguments, const std::string& name, Value& value, Names names,
                  const std::string& help) {
    return add_value(arguments, name, value, "WORD", help,
                     [names](const std::string& text) { return read_word(text, names); });
}

} // namespace qm::options
