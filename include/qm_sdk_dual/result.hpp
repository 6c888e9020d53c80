// What a call gives: a value, or why there is none.
#pragma once

#include "../qm_sdk_dual.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <variant>

namespace qm {

// Why a call did not succeed.
struct Error {
    int status = QM_FAILED; // see QM_STATUS_MAP; from 2 on, the error value of the controller
    std::string reason{};   // one English sentence, for people; programs go by the status
    std::string step{};     // which one of a call that takes several, such as "writing P001"

    // Of the C call that has just failed in this thread.
    [[nodiscard]] static Error last(int status) { return {status, qm_last_error()}; }

    [[nodiscard]] std::string text() const { return step.empty() ? reason : step + ": " + reason; }
};

// Thrown by Result::value() alone.
class Exception : public std::runtime_error {
  public:
    explicit Exception(Error error) : std::runtime_error(error.text()), m_error(std::move(error)) {}
    [[nodiscard]] const Error& error() const noexcept { return m_error; }

  private:
    Error m_error;
};

// A Value or an Error. value() throws Exception when there is none; *, -> and error() need to be asked for
// first, and throw std::bad_variant_access else.
template <class Value = void> class [[nodiscard]] Result {
  public:
    Result(Value value) : m_state(std::in_place_index<0>, std::move(value)) {}
    Result(Error error) : m_state(std::in_place_index<1>, std::move(error)) {}

    explicit operator bool() const noexcept { return m_state.index() == 0; }
    [[nodiscard]] int status() const noexcept { return *this ? QM_OK : std::get_if<1>(&m_state)->status; }
    [[nodiscard]] const Error& error() const { return std::get<1>(m_state); }

    [[nodiscard]] const Value& operator*() const& { return std::get<0>(m_state); }
    [[nodiscard]] Value operator*() && { return std::get<0>(std::move(m_state)); }
    [[nodiscard]] const Value* operator->() const { return &std::get<0>(m_state); }
    [[nodiscard]] Value value() const& {
        if (!*this) throw Exception(error());
        return **this;
    }
    [[nodiscard]] Value value() && {
        if (!*this) throw Exception(error());
        return std::get<0>(std::move(m_state));
    }

  private:
    std::variant<Value, Error> m_state;
};

// Of a call that gives nothing but whether it succeeded.
template <> class [[nodiscard]] Result<void> {
  public:
    Result() = default;
    Result(Error error) : m_error(std::move(error)) {}
    // Of a C call.
    static Result of(int status) { return status == QM_OK ? Result() : Result(Error::last(status)); }

    explicit operator bool() const noexcept { return m_error.status == QM_OK; }
    [[nodiscard]] int status() const noexcept { return m_error.status; }
    [[nodiscard]] const Error& error() const noexcept { return m_error; } // of a success, one with QM_OK
    void value() const {
        if (!*this) throw Exception(m_error);
    }

  private:
    Error m_error{QM_OK, {}};
};

} // namespace qm
