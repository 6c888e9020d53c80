// Screen settings.
#include "program/ScreenSettings.h"
#include "qm_sdk_dual/exports.h"

using namespace qm;

int program_setScreenParams_G56(E_ScreenColor_G56 color, Ouint16 ControllerType,
                                E_DoubleColorPixel_G56 doubleColor) noexcept {
    return guarded([&] {
        const auto lock = lock_renderer();
        screen_settings().set(color, ControllerType, doubleColor);
        return QM_OK;
    });
}
