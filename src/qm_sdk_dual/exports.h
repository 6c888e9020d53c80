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

} // namespace qm
