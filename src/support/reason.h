// Why the calling thread's latest call failed, for qm_last_error.
#pragma once

namespace qm {

// Starts a call: nothing has failed yet.
void clear_reason() noexcept;

// Notes why the call fails, as one sentence, and returns the status. Whoever finds a fault says so at once:
// the first sentence of a call is the one that is kept.
[[gnu::format(printf, 2, 3)]] int fail(int status, const char* format, ...) noexcept;

// The same for the exception at hand; -1.
int fail_by_exception() noexcept;

// Ends a call: success leaves no reason, and every failure leaves one.
int conclude(int status) noexcept;

// Empty when nothing has failed.
[[nodiscard]] const char* reason() noexcept;

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
