#include "ArgumentList.h"

#include <CLI/CLI.hpp>

#include <stdexcept>

namespace qm::options {
namespace {

constexpr char kGuard = '\0'; // which no argument contains

void take_or_refuse(const std::string& name, const ArgumentList::Take& take, const std::string& given) {
    const std::string text = typed(given);
    try {
        take(text);
    } catch (const std::invalid_argument& wrong) {
        throw CLI::ValidationError(name, wrong.what() + (", not '" + text + "'"));
    }
}

} // namespace

std::string guarded(const std::string& typed) { return typed.starts_with('[') ? kGuard + typed : typed; }

std::string typed(const std::string& guarded) {
    return guarded.starts_with(kGuard) ? guarded.substr(1) : guarded;
}

Argument& Argument::required() {
    m_option->required();
    return *this;
}

Argument& Argument::excludes(const Argument& other) {
    m_option->excludes(other.m_option);
    return *this;
}

Argument& Argument::needs(const Argument& other) {
    m_option->needs(other.m_option);
    return *this;
}

Argument ArgumentList::add(const std::string& name, const std::string& type, const std::string& help,
                           const Take& take) {
    const auto one = [name, take](const std::string& text) { take_or_refuse(name, take, text); };
    return Argument(m_command.add_option_function<std::string>(name, one, help)->type_name(type));
}

Argument ArgumentList::add_many(const std::string& name, int most, const std::string& help,
                                const Take& take) {
    // Not by the parser's own conversion to a list, which reads braces as an empty one.
    const CLI::callback_t all = [name, take](const CLI::results_t& texts) {
        for (const std::string& text : texts) take_or_refuse(name, take, text);
        return true;
    };
    return Argument(
        m_command.add_option(name, all, help)->expected(1, most)->allow_extra_args()->type_name(""));
}

Argument ArgumentList::add_flag(const std::string& name, const std::string& help,
                                const std::function<void()>& given) {
    return Argument(m_command.add_flag_callback(name, given, help));
}

Argument ArgumentList::add_flag(const std::string& name, bool& given, const std::string& help) {
    return Argument(m_command.add_flag(name, given, help));
}

} // namespace qm::options
