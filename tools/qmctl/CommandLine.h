// Builds the command line from the table of verbs.
#pragma once

#include "Fleet.h"

#include <CLI/CLI.hpp>

#include <span>
#include <vector>

namespace qm::ctl {

class CommandLine {
  public:
    explicit CommandLine(Session& session);

    // The verb that was asked for, its arguments read and checked. Throws UsageError, or CLI::Success for
    // --help and --version.
    [[nodiscard]] std::unique_ptr<Verb> parse(std::vector<std::string> words);
    [[nodiscard]] Reach reach() const { return m_reach; }
    // Prepares it, and finds whom it goes to, whom it may refuse. Throws UsageError, and Failure.
    void settle(Verb& verb);
    // Whom it goes to, at least one, and on which terms.
    [[nodiscard]] const std::vector<NamedController>& controllers() const { return m_controllers; }
    [[nodiscard]] const FleetTerms& terms() const { return m_terms; }

    // Whether verbs of two words begin with it.
    [[nodiscard]] bool has_group(const std::string& word) const;
    // What may follow where a shell has come to, as its words; a line each.
    [[nodiscard]] std::string completions(const std::string& typed, const std::string& word) const;
    // What --help or --version prints.
    [[nodiscard]] std::string information(const CLI::ParseError& request) const;

  private:
    void add_shared_options();
    void add_verb(const VerbEntry& entry);
    void find_controllers(const Verb& verb);
    void find_controllers(const std::vector<std::string>& names, const std::string& where);

    Session& m_session;
    CLI::App m_app;
    std::vector<std::unique_ptr<Verb>> m_verbs;
    Verb* m_chosen = nullptr;
    Reach m_reach = Reach::each;
    std::vector<NamedController> m_controllers;
    FleetTerms m_terms;
};

} // namespace qm::ctl
