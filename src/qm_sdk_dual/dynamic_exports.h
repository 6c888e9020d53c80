// Checks that the dynamicArea_ exports have in common.
#pragma once

#include "DynamicArea/DynamicArea.h"
#include "qm_sdk_dual/exports.h"

namespace qm {

// Generation 6 keeps off the ports of the system.
constexpr Ouint32 kFirstPort5 = 0, kFirstPort6 = 1024;

[[nodiscard]] inline bool valid_address(const char* ip, Ouint32 port, Ouint32 first) {
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

// Deletes areas of either generation at a valid address.
inline int delete_areas(const char* ip, Ouint32 port, Ouint32 firstPort, Oint8 count, const Oint8* ids,
                        bool idsNeeded) noexcept {
    return guarded({{"pAreaID", ids, idsNeeded}}, [=] {
        if (!valid_address(ip, port, firstPort)) return QM_FAILED + 0;
        return CDynamicAreaOperator::dynamicArea_DelAreas(ip, static_cast<Ouint16>(port), count, ids);
    });
}

inline int delete_area(const char* ip, Ouint32 port, Ouint32 firstPort, Oint8 id) noexcept {
    return guarded([=] {
        if (!valid_address(ip, port, firstPort)) return QM_FAILED + 0;
        return CDynamicAreaOperator::dynamicArea_DelArea(ip, static_cast<Ouint16>(port), id);
    });
}

} // namespace qm
