// The two ways not to do what was asked for.
#pragma once

#include "qm_sdk_dual.hpp"

namespace qm::sign {

// It cannot be done; nothing was sent.
class UsageError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// The library or the controller did not do it.
class Failure : public std::runtime_error {
  public:
    // Of a call; the words say what was tried.
    explicit Failure(qm::Error error, const std::string& words = "");
    // Of no call.
    explicit Failure(const std::string& words) : std::runtime_error(words) { m_error.step = words; }

    [[nodiscard]] int status() const { return m_error.status; }
    [[nodiscard]] std::string meaning() const; // what was tried or went wrong, else the status in words
    // Whether the same call may succeed later: there was no answer, or a spoilt one. What the controller or
    // the library refuses, they will refuse again.
    [[nodiscard]] bool may_pass() const;
    [[nodiscard]] const std::string& reason() const { return m_error.reason; } // empty without a call

  private:
    qm::Error m_error;
};

// Gives what a call gave; throws Failure when it gave nothing.
void require(const qm::Result<>& done, const std::string& words = "");
template <class Value> Value require(qm::Result<Value> result, const std::string& words = "") {
    if (!result) throw Failure(result.error(), words);
    return *std::move(result);
}

} // namespace qm::sign
