// Builds the command line from the table of verbs.
#pragma once

#include "Verb.h"

#include <CLI/CLI.hpp>

#include <vector>

namespace qm::ctl {

class CommandLine {
  public:
    explicit CommandLine(Session& session);

    // The verb that was asked for, its arguments read and checked. Throws CLI::ParseError, also for --help
    // and --version.
    [[nodiscard]] Verb& parse(int argc, char** argv);

    // What --help or --version prints.
    [[nodiscard]] std::string information(const CLI::ParseError& request) const;

  private:
    void add_shared_options(Session& session);
    void add_verb(const VerbEntry& entry);

    CLI::App m_app;
    std::vector<std::unique_ptr<Verb>> m_verbs;
    Verb* m_chosen = nullptr;
};

} // namespace qm::ctl
