#include "errors.h"

#include <algorithm>

namespace qm::sign {
namespace {

// "writing P001: The controller refused with error 107 (status 107)"
std::string in_words(const Error& error, const std::string& words) {
    std::string reason = error.reason;
    if (reason.ends_with('.')) reason.pop_back();
    return words + (words.empty() || reason.empty() ? "" : ": ") + reason + " (status " +
           std::to_string(error.status) + ")";
}

} // namespace

Failure::Failure(Error error, const std::string& words)
    : std::runtime_error(in_words(error, words.empty() ? error.step : words)), m_error(std::move(error)) {
    if (!words.empty()) m_error.step = words;
}

std::string Failure::meaning() const {
    if (!m_error.step.empty()) return m_error.step;
    switch (m_error.status) {
#define QM_STATUS_CASE(name, value, meaning)                                                                 \
    case value:                                                                                              \
        return meaning;
        QM_STATUS_MAP(QM_STATUS_CASE)
#undef QM_STATUS_CASE
    default:
        break;
    }
    if (m_error.status > 0) return "the controller refused: error " + std::to_string(m_error.status);
    return "unknown status";
}

bool Failure::may_pass() const {
    if (m_error.status != QM_FAILED) return m_error.status < 0;
    constexpr const char* kOfTheNetwork[] = {"Connecting to ",    "The connection ",
                                             "No answer from ",   "The controller is connected, but ",
                                             "There is no route", "The controller did not take ",
                                             "The answer "};
    return std::ranges::any_of(kOfTheNetwork,
                               [&](const char* words) { return m_error.reason.starts_with(words); });
}

void require(const Result<>& done, const std::string& words) {
    if (!done) throw Failure(done.error(), words);
}

} // namespace qm::sign
