#include "CommandLine.h"

#include "arguments.h"
#include "completions.h"
#include "suggestions.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <sstream>

namespace qm::ctl {
namespace {

constexpr struct {
    const char *word, *summary;
} kGroups[] = {{"power", "Switch the screen, now or by timer"},
               {"lock", "Keep showing what is shown, or one program"},
               {"unlock", "Let the screen, or all programs, be shown again"},
               {"password", "The controller's password"},
               {"network", "Addresses and the Wi-Fi module"},
               {"config", "The controller's configuration"},
               {"firmware", "The controller's firmware"},
               {"fs", "The controller's files"},
               {"area", "Areas that are shown at once"},
               {"sound", "The speech unit"},
               {"program", "Items of the playlist, from their descriptions"}};

// Says no more than what to type: what goes together is told in the notes and by the errors.
class HelpFormatter : public CLI::Formatter {
  public:
    std::string make_option_opts(const CLI::Option* option) const override {
        return option->get_type_name().empty() ? "" : " " + option->get_type_name();
    }
    std::string make_option_usage(const CLI::Option* positional) const override {
        const std::string name =
            make_option_name(positional, true) + (positional->get_expected_max() > 1 ? "..." : "");
        return positional->get_required() ? name : "[" + name + "]";
    }
};

const char* summary_of(const std::string& word) {
    for (const auto& group : kGroups)
        if (word == group.word) return group.summary;
    return "";
}

// The command named word, made when it is not there yet.
CLI::App& group(CLI::App& parent, const std::string& word) {
    const auto named = parent.get_subcommands([&](CLI::App* app) { return app->get_name() == word; });
    if (!named.empty()) return *named.front();
    CLI::App* made = parent.add_subcommand(word, summary_of(word))->group("Verbs");
    made->require_subcommand(0, 1);
    return *made;
}

} // namespace

CommandLine::CommandLine(Session& session)
    : m_session(session), m_app("Drives an LED display controller.", "qmctl") {
    m_app.formatter(std::make_shared<HelpFormatter>());
    m_app.get_formatter()->label("SUBCOMMAND", "VERB");
    m_app.fallthrough(); // shared options may stand behind the verb, too
    m_app.require_subcommand(0, 1);
    m_app.set_version_flag("--version", "qmctl " QMCTL_VERSION, "Print the version and leave");
    m_app.footer("Exit status: 0 done, 1 wrong usage (nothing was sent), 2 the controller or the library "
                 "did not do it;\nwith several controllers, 0 or 1 when that holds for all of them.\nqmctl "
                 "VERB --help tells the rest.");
    add_shared_options();
    for (const auto family : kFamilies)
        for (const VerbEntry& entry : family()) add_verb(entry);
}

void CommandLine::add_shared_options() {
    ArgumentList shared(m_app);
    add_value(shared, "-c,--controller", m_session.wanted, "NAME",
              "The controller: an address or host name with or without a port, such as\n192.168.0.199:5005, "
              "a name or tag:TAG of the list of controllers; several,\nseparated by commas, get the verb all "
              "at once (default " +
                  NamedController().address() + ")",
              read_text);
    add_value(
        shared, "--controllers", m_session.book, "FILE",
        "The list of controllers: name, address and tags a line, or an address alone; # begins\na remark "
        "(default QMCTL_CONTROLLERS or ~/.config/qmctl/controllers). Without -c all in\nFILE get the verb",
        [](const std::string& path) { return std::make_shared<const AddressBook>(path); });
    add_number(shared, "--jobs", m_session.jobs, 1, 256, "Controllers at a time, 1 to 256 (default 32)");
    add_number(
        shared, "--retries", m_terms.retries, 0, 100,
        "How often what may pass, such as no answer, is tried again, after 1 s, 2 s, 4 s\nand so on up to "
        "a minute, 0 to 100 (default 0)");
    add_value(shared, "--report", m_terms.report, "FILE",
              "Append what happened to a file, a JSON object a line for each controller", read_text);
    shared.add_flag("--json", m_session.json, "Print the result as one JSON object");
    shared.add_flag("--verbose", m_session.verbose, "Show the library's messages on standard error");
}

void CommandLine::add_verb(const VerbEntry& entry) {
    CLI::App* command = &m_app;
    std::istringstream words(entry.words);
    for (std::string word; words >> word;) command = &group(*command, word);
    command->description(entry.summary);
    command->footer(std::string(entry.notes) + "\n\nOptions of every verb, such as -c: qmctl --help");

    Verb* verb = m_verbs.emplace_back(entry.make()).get();
    ArgumentList arguments(*command);
    verb->add_arguments(arguments);
    command->callback([this, verb, reach = entry.reach] {
        if (!m_chosen) m_reach = reach;
        if (!m_chosen) m_chosen = verb; // the innermost is called first
    });
}

std::unique_ptr<Verb> CommandLine::parse(std::vector<std::string> words) {
    std::ranges::reverse(words); // the parser takes them from the end
    std::ranges::transform(words, words.begin(), guarded);
    try {
        m_app.parse(std::move(words));
    } catch (const CLI::Success&) {
        throw;
    } catch (const CLI::ParseError& error) {
        m_session.verb = named_verb(m_app);
        throw UsageError(explained(m_app, error));
    }
    m_session.verb = named_verb(m_app);
    if (!m_chosen) throw UsageError(missing_verb(m_app));
    m_session.broadcast = m_reach == Reach::broadcast;
    return std::move(*std::ranges::find(m_verbs, m_chosen, &std::unique_ptr<Verb>::get));
}

void CommandLine::settle(Verb& verb) {
    verb.prepare();
    find_controllers(verb);
    for (const NamedController& controller : m_controllers) verb.check(controller);
}

void CommandLine::find_controllers(const Verb& verb) {
    const bool none = m_reach == Reach::broadcast || m_reach == Reach::none;
    const std::vector<std::string> names = m_session.wanted ? std::vector{*m_session.wanted}
                                           : none           ? std::vector<std::string>()
                                                            : verb.controllers();
    if (none || (names.empty() && !m_session.book))
        m_controllers = {NamedController()};
    else if (names.empty())
        m_controllers = m_session.book->all();
    else
        find_controllers(names, m_session.wanted ? "--controller" : "controllers");
    if (m_controllers.empty())
        throw UsageError("--controllers: expected a file with at least one controller");
    m_session.one_of_many = m_controllers.size() > 1;
    m_session.target = m_controllers.front();
    if (m_reach == Reach::one && m_session.one_of_many)
        throw UsageError("--controller: this verb makes files for one controller, not for " +
                         std::to_string(m_controllers.size()));
}

void CommandLine::find_controllers(const std::vector<std::string>& names, const std::string& where) {
    const AddressBook book = m_session.book ? *m_session.book : AddressBook::of_user();
    for (const std::string& name : names) {
        try {
            for (NamedController& found : book.find(name))
                if (std::ranges::find(m_controllers, found.address(), &NamedController::address) ==
                    m_controllers.end())
                    m_controllers.push_back(std::move(found));
        } catch (const std::invalid_argument& wrong) {
            throw UsageError(where + ": " + wrong.what());
        }
    }
}

bool CommandLine::has_group(const std::string& word) const {
    return std::ranges::any_of(kGroups, [&](const auto& group) { return word == group.word; });
}

std::string CommandLine::completions(const std::string& typed, const std::string& word) const {
    std::string lines;
    for (const std::string& one : ctl::completions(m_app, typed, word)) lines += one + "\n";
    return lines;
}

std::string CommandLine::information(const CLI::ParseError& request) const {
    std::ostringstream text;
    m_app.exit(request, text, text);
    return text.str();
}

} // namespace qm::ctl
