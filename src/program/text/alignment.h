// Where a block stands in the room that it has.
#pragma once

#include "qm_sdk_dual.h"

namespace qm {

// Offset of a block of width srcW in areaW: align 1 centre, 2 right, else left; never negative.
[[nodiscard]] constexpr Oint32 get_x_area(Ouint8 align, Oint32 areaW, Oint32 srcW) {
    if (areaW <= srcW) return 0;
    if (align == 1) return (areaW - srcW) / 2;
    return align == 2 ? areaW - srcW : 0;
}

// Offset that centres num lines of height srcH in areaH; never negative.
[[nodiscard]] constexpr Oint32 get_y_area(Oint32 areaH, Oint32 num, Oint32 srcH) {
    const Oint32 left = areaH - num * srcH;
    return left > 0 ? left / 2 : 0;
}

} // namespace qm
