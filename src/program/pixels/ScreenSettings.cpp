#include "program/pixels/ScreenSettings.h"

#include "support/controller_types.h"
#include "support/message.h"

namespace qm {
namespace {

int transfer_mode(Ouint16 controllerType) {
    if (const auto mode = transfer_mode_of(controllerType)) return *mode;
    say("Error:can't find tranPixelMode,use 0 instead.\n");
    return Tran_Pixel_Mode0;
}

} // namespace

void ScreenSettings::set(Ouint32 color, Ouint16 controllerType, Ouint32 doubleColor) {
    m_screenColor = color;
    m_controllerType = controllerType;
    m_tranMode = transfer_mode(controllerType);
    m_doubleColorPixel = doubleColor;
}

PixelLayout ScreenSettings::layout() const {
    return {static_cast<int>(m_screenColor), m_tranMode, static_cast<int>(m_doubleColorPixel),
            getAlignPixels(m_tranMode)};
}

ScreenSettings& screen_settings() {
    static ScreenSettings settings;
    return settings;
}

std::unique_lock<std::mutex> lock_renderer() {
    static std::mutex renderer;
    return std::unique_lock(renderer);
}

CData convert_canvas(Canvas32& canvas, int left) {
    const PixelLayout layout = screen_settings().layout();
    CData data(static_cast<Ouint32>(pixel_data_size(left, canvas.width(), canvas.height(), layout)));
    convert_pixels(canvas.pixels(), left, canvas.width(), canvas.height(), layout, data.m_pData.data());
    require_success(cairo_status(canvas.context()));
    return data;
}

} // namespace qm
