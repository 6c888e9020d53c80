// Checks that the dynamicArea_ exports have in common.
#pragma once

#include "DynamicArea/DynamicArea.h"
#include "qm_sdk_dual/exports.h"

namespace qm {

[[nodiscard]] inline bool reachable(const char* ip, Ouint32 port) { return ip && port <= 0xFFFF; }
// Generation 6 keeps off the ports of the system.
[[nodiscard]] inline bool valid_address(const char* ip, Ouint32 port) {
    return reachable(ip, port) && port >= 1024;
}

[[nodiscard]] inline ControllerAddress address_of(const char* ip, Ouint32 port, E_ScreenColor_G56 color) {
    return {ip, static_cast<Ouint16>(port), color};
}

// A rectangle without pixels has nothing to show, and a longer side than this cannot be drawn.
[[nodiscard]] inline bool has_pixels(Ouint16 width, Ouint16 height) {
    constexpr Ouint16 kLongestSide = 32767;
    return width > 0 && height > 0 && width <= kLongestSide && height <= kLongestSide;
}

} // namespace qm
