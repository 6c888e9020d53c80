// qmctl as it is started from a shell.
#pragma once

#include <nlohmann/json.hpp>

#include <string>
#include <vector>

namespace qm::test {

struct Outcome {
    int status = -1; // exit status; -1 when a signal ended it, or it had to be ended
    std::string out, err;
};

// Runs qmctl to its end, for at most 60 s. output: a file to write its results to, in place of Outcome::out.
Outcome qmctl(const std::vector<std::string>& arguments, const std::string& input = "",
              const char* output = nullptr);

// Runs qmctl --json against 127.0.0.1:port, which has to print one JSON object in one line.
nlohmann::json qmctl_json(unsigned port, std::vector<std::string> arguments);

std::string address(unsigned port); // 127.0.0.1:port

} // namespace qm::test
