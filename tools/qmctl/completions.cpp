#include "completions.h"

#include "sign/AddressBook.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <set>

namespace qm::ctl {
namespace {

using Words = std::vector<std::string>;

// Blanks part words unless they stand in quotes; the last one is what is being typed.
Words words_of(const std::string& line) {
    Words words{""};
    char quote = 0;
    for (const char c : line) {
        if (quote != 0 ? c == quote : c == '"' || c == '\'')
            quote = quote != 0 ? '\0' : c;
        else if (quote == 0 && c == ' ')
            words.emplace_back();
        else
            words.back() += c;
    }
    return words;
}

class Typed {
  public:
    Typed(const CLI::App& app, const std::string& line) : m_command(&app) {
        Words words = words_of(line);
        m_last = words.back();
        words.pop_back();
        for (std::size_t i = 1; i < words.size(); ++i) take(words[i]);
        if (const auto equals = m_last.find('='); m_last.starts_with("--") && equals != std::string::npos) {
            m_option = find_option(m_last.substr(0, equals));
            m_front = m_last.substr(0, equals + 1);
        }
    }

    // All that may stand in the place of the last word.
    [[nodiscard]] Words candidates() const {
        if (m_option) return m_option->check_lname("controller") ? controllers() : Words();
        Words words;
        if (m_last.starts_with('-')) {
            for (const CLI::App* app = m_command; app; app = app->get_parent())
                for (const CLI::Option* option : app->get_options())
                    for (const std::string& name : option->get_lnames()) words.push_back("--" + name);
        } else {
            for (const CLI::App* verb : verbs()) words.push_back(verb->get_name());
        }
        return words;
    }
    [[nodiscard]] const std::string& last() const { return m_last; }

  private:
    [[nodiscard]] std::vector<const CLI::App*> verbs() const {
        return m_command->get_subcommands([](const CLI::App*) { return true; });
    }
    void take(const std::string& word) {
        if (const CLI::Option* option = std::exchange(m_option, nullptr)) {
            if (option->check_lname("controllers")) m_list = word;
        } else if (word.starts_with('-')) {
            if (word.starts_with("--controllers=")) m_list = word.substr(word.find('=') + 1);
            if (const CLI::Option* named = find_option(word); named && named->get_items_expected_max() > 0)
                m_option = named;
        } else {
            for (const CLI::App* verb : verbs())
                if (verb->get_name() == word) m_command = verb;
        }
    }
    [[nodiscard]] const CLI::Option* find_option(const std::string& name) const {
        for (const CLI::App* app = m_command; app; app = app->get_parent())
            if (const CLI::Option* option = app->get_option_no_throw(name)) return option;
        return nullptr;
    }
    // Behind those that are there already, for several are separated by commas.
    [[nodiscard]] Words controllers() const {
        const auto comma = m_last.rfind(',');
        const std::string front = comma == std::string::npos ? m_front : m_last.substr(0, comma + 1);
        std::set<std::string> names;
        try {
            const auto book = m_list.empty() ? sign::AddressBook::of_user() : sign::AddressBook(m_list);
            for (const sign::NamedController& controller : book.all())
                names.insert(front + controller.label());
            for (const std::string& tag : book.tags()) names.insert(front + "tag:" + tag);
        } catch (const std::exception&) { // told when the line is run, not while it is typed
        }
        return {names.begin(), names.end()};
    }

    const CLI::App* m_command;
    const CLI::Option* m_option = nullptr; // whose value is being typed
    std::string m_last, m_front, m_list;
};

} // namespace

Words completions(const CLI::App& app, const std::string& line, const std::string& word) {
    const Typed typed(app, line);
    const std::size_t before = typed.last().size() - std::min(word.size(), typed.last().size());
    Words fitting;
    for (const std::string& candidate : typed.candidates())
        if (candidate.starts_with(typed.last())) fitting.push_back(candidate.substr(before));
    return fitting;
}

} // namespace qm::ctl
