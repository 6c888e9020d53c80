// What every exported function is made with.
#pragma once

#include "broadcast/HV_Broadcast.h"
#include "qm_sdk_dual.h"
#include "serialPort/SerialPortPeer.h"
#include "tcpClient/HV_Client.h"

#include <utility>

namespace qm {

// Runs the body of an export; nothing may be thrown across the C boundary.
template <class Body>
int guarded(Body&& body) noexcept {
    try {
        return std::forward<Body>(body)();
    } catch (...) {
        return QM_FAILED;
    }
}

// Whether all pointers that a call needs are there.
template <class... Pointers>
bool given(const Pointers*... pointers) {
    return (... && pointers);
}

// One command on a connection of its own: TCP, serial, broadcast.
template <class Command>
int over_tcp(const char* ip, Ouint16 port, Command&& command) noexcept {
    if (!ip) return QM_FAILED;
    return guarded([&] {
        HV_Client client;
        const int code = client.init(ip, port);
        return code == QM_OK ? command(client) : code;
    });
}

template <class Command>
int over_serial(const char* uartPort, Ouint8 baudRate, Command&& command) noexcept {
    if (!uartPort) return QM_FAILED;
    return guarded([&] {
        HV_serialPort line;
        const int code = line.init(uartPort, baudRate);
        return code == QM_OK ? command(line) : code;
    });
}

template <class Command>
int over_broadcast(Command&& command) noexcept {
    return guarded([&] {
        HV_Broadcast broadcast;
        const int code = broadcast.init();
        return code == QM_OK ? command(broadcast) : code;
    });
}

// Runs a query with room for the given number of answer bytes, and copies what came into the record, as far
// as it reaches.
template <std::size_t Capacity, class Record, class Query>
int into_record(Record& record, Query&& query) {
    Ouint8 buffer[Capacity];
    Answer answer{buffer};
    const int code = query(answer);
    std::memcpy(&record, buffer, std::min(sizeof record, static_cast<std::size_t>(answer.length)));
    return code;
}

} // namespace qm
