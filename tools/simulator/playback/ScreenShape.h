// A screen as pixels are made for it.
#pragma once

#include "simulator/playback/Rect.h"
#include "simulator/protocol/PixelFormat.h"

namespace qm::sim {

struct ScreenShape {
    int width = 0, height = 0;
    PixelFormat format;

    [[nodiscard]] Rect whole() const { return {0, 0, width, height}; }
};

} // namespace qm::sim
