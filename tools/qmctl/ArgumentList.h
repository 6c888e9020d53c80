// What a verb takes from the command line. Keeps the parser, whose header takes long to compile, out of the
// verbs.
#pragma once

#include <functional>
#include <string>

namespace CLI {
class App;
class Option;
} // namespace CLI

namespace qm::ctl {

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

} // namespace qm::ctl
