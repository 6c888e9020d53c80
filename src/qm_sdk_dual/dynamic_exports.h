// Checks that the dynamicArea_ exports have in common.
#pragma once

#include "DynamicArea/DynamicArea.h"
#include "qm_sdk_dual/exports.h"

namespace qm {

// Generation 6 keeps off the ports of the system.
constexpr Ouint32 kFirstPort = 1024;

[[nodiscard]] inline bool valid_address(const char* ip, Ouint32 port, Ouint32 first = kFirstPort) {
    return given({{"pIP", ip}}) && in_range("nPort", port, first, 0xFFFF);
}

[[nodiscard]] inline ControllerAddress address_of(const char* ip, Ouint32 port, E_ScreenColor_G56 color) {
    return {ip, static_cast<Ouint16>(port), color};
}

// A rectangle without pixels has nothing to show.
[[nodiscard]] inline bool has_pixels(const char* widthName, Ouint16 width, const char* heightName,
                                     Ouint16 height) {
    return in_range(widthName, width, 1, kLongestSide) && in_range(heightName, height, 1, kLongestSide);
}

} // namespace qm
