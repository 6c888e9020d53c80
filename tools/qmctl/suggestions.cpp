#include "suggestions.h"

#include "options/ArgumentList.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <numeric>

namespace qm::ctl {
namespace {

using options::typed;

struct Candidate {
    std::string word;    // what may have been typed
    std::string meaning; // all that is to be typed
};

const CLI::App& innermost(const CLI::App& app) {
    const auto named = app.get_subcommands();
    return named.empty() ? app : innermost(*named.front());
}

std::vector<const CLI::App*> children(const CLI::App& app) {
    return app.get_subcommands([](const CLI::App*) { return true; });
}

std::string path_of(const CLI::App& command) {
    const CLI::App* parent = command.get_parent();
    if (!parent) return "";
    const std::string above = path_of(*parent);
    return above + (above.empty() ? "" : " ") + command.get_name();
}

std::string list(const CLI::App& group) {
    std::vector<std::string> names;
    for (const CLI::App* child : children(group)) names.push_back(child->get_name());
    return options::joined(names);
}

// The verbs of a group, and behind them those of the groups in it.
std::vector<Candidate> verbs_of(const CLI::App& group) {
    std::vector<Candidate> verbs;
    for (const CLI::App* child : children(group)) verbs.push_back({child->get_name(), path_of(*child)});
    for (const CLI::App* child : children(group))
        std::ranges::copy(verbs_of(*child), std::back_inserter(verbs));
    return verbs;
}

// Of the command and of those around it.
std::vector<Candidate> options_of(const CLI::App& command) {
    std::vector<Candidate> options;
    for (const CLI::App* app = &command; app; app = app->get_parent())
        for (const CLI::Option* option : app->get_options()) {
            for (const std::string& name : option->get_lnames())
                options.push_back({"--" + name, "--" + name});
            for (const std::string& name : option->get_snames()) options.push_back({"-" + name, "-" + name});
        }
    return options;
}

std::string lower(std::string text) {
    std::ranges::transform(text, text.begin(), [](unsigned char c) { return std::tolower(c); });
    return text;
}

// How many characters are to be put in, left out, changed or swapped with their neighbour.
std::size_t distance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> before, last(b.size() + 1), row(b.size() + 1);
    std::iota(last.begin(), last.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (a[i - 1] != b[j - 1])});
            if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1])
                row[j] = std::min(row[j], before[j - 2] + 1);
        }
        before = std::exchange(last, row);
    }
    return last.back();
}

std::string without_dashes(const std::string& word) {
    return word.substr(std::min(word.find_first_not_of('-'), word.size()));
}

// The first of the nearest; a word that was begun has no mistakes.
std::string nearest(const std::string& typed, const std::vector<Candidate>& candidates) {
    constexpr std::size_t kBegun = 2; // characters that say what is meant
    const std::string word = lower(without_dashes(typed));
    std::size_t fewest = std::max<std::size_t>(1, word.size() / 3) + 1;
    std::string meaning;
    for (const Candidate& candidate : candidates) {
        const std::string known = without_dashes(candidate.word);
        const bool begun = word.size() >= kBegun && known.starts_with(word);
        const std::size_t mistakes = begun ? 0 : distance(word, known);
        if (mistakes >= std::min(fewest, std::max(word.size(), known.size()))) continue;
        fewest = mistakes;
        meaning = candidate.meaning;
    }
    return meaning;
}

std::string suggestion(const std::string& meaning) {
    return meaning.empty() ? "" : "; did you mean '" + meaning + "'?";
}

bool is_option(const std::string& word) { return word.size() > 1 && word.starts_with('-'); }

std::string unknown_option(const CLI::App& command, const std::string& typed) {
    const std::string name = typed.substr(0, typed.find('='));
    const std::string meant = nearest(name, options_of(command));
    if (meant == name) return "option '" + name + "' is the verb's and stands behind it: " + path_of(command);
    return "unknown option '" + name + "'" + suggestion(meant);
}

std::string unknown_verb(const CLI::App& group, const std::string& word) {
    const std::string path = path_of(group), verb = path.empty() ? word : path + " " + word;
    std::vector<Candidate> known = verbs_of(group);
    std::ranges::copy(options_of(group), std::back_inserter(known)); // such as --help
    std::string meant = suggestion(nearest(word, known));
    if (meant.empty() && !path.empty()) meant = "; " + path + " has " + list(group);
    return "unknown verb '" + verb + "'" + meant;
}

std::string unknown_value(const CLI::App& verb, const std::string& word) {
    const auto positional = [](const CLI::Option* option) { return option->get_positional(); };
    const bool takes_values = !verb.get_options(positional).empty();
    return "unexpected argument '" + word + "'" +
           (takes_values ? "; what contains spaces stands in quotes" : "");
}

// What neither a verb nor an option took; empty when there is nothing.
std::string unknown_argument(const CLI::App& line) {
    std::vector<std::string> unknown = line.remaining(true);
    std::erase(unknown, "--");
    if (unknown.empty()) return "";
    std::ranges::transform(unknown, unknown.begin(), typed);
    const CLI::App& command = innermost(line);
    const auto option = std::ranges::find_if(unknown, is_option);
    if (option != unknown.end()) return unknown_option(command, *option);
    const bool group = !children(command).empty();
    return group ? unknown_verb(command, unknown.front()) : unknown_value(command, unknown.front());
}

} // namespace

std::string explained(const CLI::App& line, const CLI::ParseError& error) {
    // First: what was not taken may well be what the error misses.
    if (std::string unknown = unknown_argument(line); !unknown.empty()) return unknown;
    const std::string what = error.what();
    constexpr std::string_view kTo = " arguments to ";
    if (const auto to = what.find(kTo); to != std::string::npos) {
        const auto name = to + kTo.size();
        return what.substr(name, what.find(' ', name) - name) + ": given more than once";
    }
    const bool no_value = dynamic_cast<const CLI::ArgumentMismatch*>(&error);
    return no_value ? what.substr(0, what.find(':')) + ": a value is required" : what;
}

std::string missing_verb(const CLI::App& line) {
    const CLI::App& command = innermost(line);
    const std::string path = path_of(command);
    return path.empty() ? "a verb is required" : path + ": a verb is required: " + list(command);
}

std::string named_verb(const CLI::App& line) { return path_of(innermost(line)); }

} // namespace qm::ctl
