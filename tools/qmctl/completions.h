// What may follow on a command line that is being typed.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
} // namespace CLI

namespace qm::ctl {

// line: what has been typed so far, qmctl first; word: as much of its end as the shell takes for the word to
// be completed, which may have begun behind a colon or an equals sign. Verbs, options, and for -c the names
// and tags of the list of controllers. Empty where anything may follow, such as a file.
[[nodiscard]] std::vector<std::string> completions(const CLI::App& app, const std::string& line,
                                                   const std::string& word);

} // namespace qm::ctl
