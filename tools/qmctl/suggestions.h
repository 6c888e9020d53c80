// Says what is wrong with a command line, and what was probably meant.
#pragma once

#include <string>

namespace CLI {
class App;
class ParseError;
} // namespace CLI

namespace qm::ctl {

// What is wrong with a command line that was not taken: the argument that is not known and the nearest one
// that is, or else the error.
[[nodiscard]] std::string explained(const CLI::App& line, const CLI::ParseError& error);

// Of a command line that ends before its verb does.
[[nodiscard]] std::string missing_verb(const CLI::App& line);

// The words of the verb that was named, as far as it was: "fs ls".
[[nodiscard]] std::string named_verb(const CLI::App& line);

} // namespace qm::ctl
