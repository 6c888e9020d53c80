// Why the calling thread's call fails, for qm_last_error.
#pragma once

#include <initializer_list>

namespace qm {

// Starts a call: nothing has failed yet. Called again where a call goes on after a failure that it bears.
void clear_reason() noexcept;

// Notes why the call fails, as one sentence, and returns the status. Whoever finds a fault says so at once:
// the first sentence is the one that is kept.
[[gnu::format(printf, 2, 3)]] int fail(int status, const char* format, ...) noexcept;

// The same for exhausted memory and for the exception at hand; -1.
int fail_by_memory() noexcept;
int fail_by_exception() noexcept;

// Ends a call: success leaves no reason, and every failure leaves one.
int conclude(int status) noexcept;

// Empty when nothing has failed.
[[nodiscard]] const char* reason() noexcept;

// A pointer that a call needs, perhaps on a condition, by the name that it has in the public header.
struct Needed {
    const char* name;
    const void* pointer;
    bool needed = true;
};

// Whether all of them are there, or a number lies in its range; when not, the reason names the argument.
[[nodiscard]] bool given(std::initializer_list<Needed> arguments) noexcept;
[[nodiscard]] bool in_range(const char* name, long value, long least, long most) noexcept;

// A system error in English words, whatever the locale.
[[nodiscard]] const char* error_text(int error) noexcept;

// The end of a text of the caller's, short enough for a sentence; it begins with a whole UTF-8 character.
[[nodiscard]] const char* last_part(const char* text) noexcept;

constexpr int kReasonSize = 512;

// Sets the reason of the call at hand aside while foreign code runs, which finds none.
class ReasonSetAside {
  public:
    ReasonSetAside() noexcept;
    ReasonSetAside(const ReasonSetAside&) = delete;
    ReasonSetAside& operator=(const ReasonSetAside&) = delete;
    ~ReasonSetAside();

  private:
    char m_reason[kReasonSize];
};

} // namespace qm
