// The screen that everything is rendered for, and the lock that guards rendering.
#pragma once

#include "program/pixels/Surface.h"
#include "program/pixels/pixel_packing.h"
#include "support/bytes.h"

#include <mutex>

namespace qm {

struct ScreenSettings {
    Ouint32 m_screenColor = SCREEN_COLOR_DOUBLE;
    Ouint16 m_controllerType = 0;
    int m_tranMode = Tran_Pixel_Mode4;
    Ouint32 m_doubleColorPixel = DOUBLE_COLOR_PIXTYPE_1;

    // Sets all four; the transfer mode follows from the controller type.
    void set(Ouint32 color, Ouint16 controllerType, Ouint32 doubleColor);
    [[nodiscard]] PixelLayout layout() const;
};

// Unit of the rows of bit planes, in pixels.
[[nodiscard]] constexpr Ouint32 getAlignPixels(int tranMode) { return tranMode == Tran_Pixel_Mode4 ? 32 : 8; }

// The process's settings. Whoever reads or sets them, or renders, holds the renderer's lock.
ScreenSettings& screen_settings();
[[nodiscard]] std::unique_lock<std::mutex> lock_renderer();

// Converts a drawing that stands at column left of the screen for the process's settings.
[[nodiscard]] CData convert_canvas(Canvas32& canvas, int left);

} // namespace qm
