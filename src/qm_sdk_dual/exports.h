// What every exported function is made with.
#pragma once

#include "broadcast/HV_Broadcast.h"
#include "qm_sdk_dual.h"
#include "serialPort/SerialPortPeer.h"
#include "support/message.h"
#include "support/reason.h"
#include "tcpClient/HV_Client.h"

#include <pthread.h>
#include <type_traits>
#include <utility>

namespace qm {

// Puts a cancellation of the calling thread off: it would unwind through the C boundary.
class NoCancellation {
  public:
    NoCancellation() { ::pthread_setcancelstate(PTHREAD_CANCEL_DISABLE, &m_before); }
    NoCancellation(const NoCancellation&) = delete;
    NoCancellation& operator=(const NoCancellation&) = delete;
    ~NoCancellation() { ::pthread_setcancelstate(m_before, nullptr); }

  private:
    int m_before = 0;
};

// The status that an operation gives, or whether it succeeded, or that it did, when it cannot fail.
template <class Operation, class... Arguments>
int status_of(const Operation& operation, Arguments&&... arguments) {
    using Result = std::invoke_result_t<const Operation&, Arguments...>;
    if constexpr (std::is_void_v<Result>)
        return operation(std::forward<Arguments>(arguments)...), QM_OK;
    else if constexpr (std::is_same_v<Result, bool>)
        return operation(std::forward<Arguments>(arguments)...) ? QM_OK : QM_FAILED;
    else
        return operation(std::forward<Arguments>(arguments)...);
}

// Runs the body of an export, when the arguments that it needs are there; nothing may be thrown across the C
// boundary. Every export goes through here, so that none leaves another one's reason behind.
template <class Body> int guarded(std::initializer_list<Needed> needed, Body&& body) noexcept {
    const NoCancellation whole;
    clear_reason();
    if (in_message_handler()) return fail(QM_FAILED, "A message handler may not call the library.");
    if (!given(needed)) return QM_FAILED;
    try {
        return conclude(status_of(body));
    } catch (...) {
        return fail_by_exception();
    }
}

template <class Body> int guarded(Body&& body) noexcept { return guarded({}, std::forward<Body>(body)); }

// For calls that do nothing.
inline int nothing_to_do() noexcept {
    return guarded([] {});
}

// Where a controller is reached.
struct Tcp {
    const char* ip;
    Ouint16 port;
    using Connection = HV_Client;
    [[nodiscard]] bool named() const { return given({{"ip", ip}}); }
    [[nodiscard]] int open(Connection& connection) const { return connection.init(ip, port); }
};

struct Serial {
    const char* uartPort;
    Ouint8 baudRate;
    using Connection = HV_serialPort;
    [[nodiscard]] bool named() const { return given({{"uartPort", uartPort}}); }
    [[nodiscard]] int open(Connection& connection) const { return connection.init(uartPort, baudRate); }
};

struct Broadcast {
    using Connection = HV_Broadcast;
    [[nodiscard]] bool named() const { return true; }
    [[nodiscard]] int open(Connection& connection) const { return connection.init(); }
};

// One command on a connection of its own.
template <class Route, class Command> int on_connection(const Route& route, Command&& command) {
    if (!route.named()) return QM_FAILED;
    typename Route::Connection connection;
    const int code = route.open(connection);
    return code == QM_OK ? command(connection) : code;
}

// The same as the whole of an export that needs these arguments.
template <class Route, class Command>
int run(const Route& route, std::initializer_list<Needed> needed, Command&& command) noexcept {
    return guarded(needed, [&] { return on_connection(route, std::forward<Command>(command)); });
}

template <class Route, class Command> int run(const Route& route, Command&& command) noexcept {
    return run(route, {}, std::forward<Command>(command));
}

// Pixels that a rectangle drawn by cairo may have in one direction.
constexpr long kLongestSide = 32767;

// Runs a query with room for the given number of answer bytes, and copies what came into the record, as far
// as it reaches.
template <std::size_t Capacity, class Record, class Query> int into_record(Record& record, Query&& query) {
    Ouint8 buffer[Capacity];
    Answer answer{buffer};
    const int code = query(answer);
    std::memcpy(&record, buffer, std::min(sizeof record, static_cast<std::size_t>(answer.length)));
    return code;
}

} // namespace qm
