// What a call gave, and why.
#pragma once

#include "qm_sdk_dual.h"

#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>
#include <string_view>

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

// Whether it has an argument, or a field, of that name.
inline bool declares(const std::string& name) {
    const std::string& text = public_header();
    for (auto at = text.find(name, 1); at != text.npos; at = text.find(name, at + 1)) {
        const char before = text[at - 1], after = text[at + name.size()];
        if ((before == ' ' || before == '*') &&
            std::string_view(",);[").find(after) != std::string_view::npos)
            return true;
    }
    return false;
}

// Whether the call was refused with -1 for an argument, or a field of one, which the reason names.
inline testing::AssertionResult refuses_an_argument(const Outcome& outcome) {
    constexpr std::string_view kStart = "Argument ";
    const std::string& reason = outcome.reason;
    if (outcome.status != QM_FAILED || !reason.starts_with(kStart) || !reason.ends_with('.'))
        return testing::AssertionFailure() << outcome.status << ", " << reason;
    const std::string name = reason.substr(kStart.size(), reason.find(' ', kStart.size()) - kStart.size());
    if (!declares(name)) return testing::AssertionFailure() << "the header has no " << name;
    return testing::AssertionSuccess();
}

} // namespace qm::test
