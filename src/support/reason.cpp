#include "support/reason.h"

#include "qm_sdk_dual.h"

#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <exception>
#include <new>

namespace qm {
namespace {

// Room for every sentence; a plain array needs no memory when memory has run out.
thread_local char t_reason[kReasonSize];

const char* meaning(int status) {
    switch (status) {
#define QM_STATUS_CASE(name, value, meaning)                                                                 \
    case name:                                                                                               \
        return meaning;
        QM_STATUS_MAP(QM_STATUS_CASE)
#undef QM_STATUS_CASE
    default:
        return "the call did not succeed";
    }
}

} // namespace

void clear_reason() noexcept { t_reason[0] = 0; }
const char* reason() noexcept { return t_reason; }

int fail(int status, const char* format, ...) noexcept {
    if (t_reason[0] != 0) return status;
    std::va_list arguments;
    va_start(arguments, format);
    std::vsnprintf(t_reason, sizeof t_reason, format, arguments);
    va_end(arguments);
    return status;
}

int fail_by_memory() noexcept { return fail(QM_FAILED, "Out of memory."); }

int fail_by_exception() noexcept {
    try {
        throw;
    } catch (const std::bad_alloc&) {
        return fail_by_memory();
    } catch (const std::exception& error) {
        return fail(QM_FAILED, "The call was given up: %s.", error.what());
    } catch (...) {
        return fail(QM_FAILED, "The call was given up.");
    }
}

int conclude(int status) noexcept {
    if (status != QM_OK) return fail(status, "Status %d: %s.", status, meaning(status));
    clear_reason();
    return status;
}

bool given(std::initializer_list<Needed> arguments) noexcept {
    for (const Needed& argument : arguments) {
        if (argument.pointer || !argument.needed) continue;
        (void)fail(QM_FAILED, "Argument %s is missing.", argument.name);
        return false;
    }
    return true;
}

bool in_range(const char* name, long value, long least, long most) noexcept {
    if (least <= value && value <= most) return true;
    (void)fail(QM_FAILED, "Argument %s is %ld, and may be %ld to %ld.", name, value, least, most);
    return false;
}

const char* error_text(int error) noexcept {
    const char* text = ::strerrordesc_np(error);
    return text ? text : "unknown error";
}

const char* last_part(const char* text) noexcept {
    constexpr std::size_t kLongest = 200;
    const std::size_t length = std::strlen(text);
    if (length <= kLongest) return text;
    text += length - kLongest;
    while ((*text & 0xC0) == 0x80) ++text;
    return text;
}

ReasonSetAside::ReasonSetAside() noexcept {
    std::memcpy(m_reason, t_reason, sizeof m_reason);
    clear_reason();
}

ReasonSetAside::~ReasonSetAside() { std::memcpy(t_reason, m_reason, sizeof m_reason); }

} // namespace qm
