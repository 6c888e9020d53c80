// What a call gave, and why.
#pragma once

#include "qm_sdk_dual.h"

#include <fstream>
#include <gtest/gtest.h>
#include <regex>
#include <sstream>
#include <string>

namespace qm::test {

// Made of a status as soon as the call has returned it.
struct Outcome {
    Outcome(int code) : status(code), reason(qm_last_error()) {} // NOLINT: a list of calls is one of outcomes
    int status;
    std::string reason;
};

// The declarations of the public header, without its comments.
inline const std::string& public_header() {
    static const std::string declarations = [] {
        std::stringstream file;
        file << std::ifstream(QM_PUBLIC_HEADER).rdbuf();
        std::string text = file.str();
        for (std::size_t from; (from = text.find("/*")) != text.npos;)
            text.erase(from, text.find("*/", from) + 2 - from);
        return text;
    }();
    return declarations;
}

// Whether the call was refused with -1 for an argument, or a field of one, which the reason names.
inline testing::AssertionResult refuses_an_argument(const Outcome& outcome) {
    std::smatch name;
    if (outcome.status != QM_FAILED ||
        !std::regex_match(outcome.reason, name, std::regex("Argument (\\w+) .+\\.")))
        return testing::AssertionFailure() << outcome.status << ", " << outcome.reason;
    if (!std::regex_search(public_header(), std::regex("[ *]" + name[1].str() + "[,);\\[]")))
        return testing::AssertionFailure() << "the header has no " << name[1];
    return testing::AssertionSuccess();
}

} // namespace qm::test
