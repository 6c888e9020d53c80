// What every exported function is made with.
#pragma once

#include "qm_sdk_dual.h"
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

// One command on a connection of its own.
template <class Command>
int with_client(const char* ip, Ouint16 port, Command&& command) noexcept {
    if (!ip) return QM_FAILED;
    return guarded([&] {
        HV_Client client;
        if (const int code = client.init(ip, port); code != 0) return code;
        return command(client);
    });
}

} // namespace qm
