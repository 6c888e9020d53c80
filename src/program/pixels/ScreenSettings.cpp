#include "program/pixels/ScreenSettings.h"

#include "support/message.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>

namespace qm {
namespace {

// Controller types of one transfer mode: a series and a range of its variants.
struct TypeRange {
    Ouint8 series, firstVariant, lastVariant;
    int mode;
};

constexpr TypeRange kKnownTypes[] = {
    {0x51, 0x00, 0x09, 0}, {0x51, 0x13, 0x13, 0}, {0x51, 0x15, 0x16, 0}, {0x51, 0x18, 0x18, 0},
    {0x51, 0x22, 0x22, 0}, {0x52, 0x00, 0x00, 0}, {0x52, 0x02, 0x05, 0}, {0x54, 0x01, 0x03, 0},
    {0x55, 0x00, 0x05, 0}, {0x55, 0x07, 0x08, 0}, {0x5E, 0x01, 0x06, 0}, {0x5F, 0x01, 0x06, 0},
    {0x62, 0x00, 0x05, 4}, {0x62, 0x10, 0x14, 4}, {0x63, 0x00, 0x04, 4}, {0x63, 0x20, 0x24, 4},
    {0x63, 0x30, 0x34, 4}, {0x63, 0x40, 0x44, 4}, {0x63, 0x50, 0x53, 4}, {0x64, 0x00, 0x05, 4},
    {0x66, 0x01, 0x06, 5}, {0x66, 0x81, 0x81, 5}, {0x66, 0x00, 0x00, 3}, {0x66, 0x07, 0x07, 3},
    {0x74, 0x01, 0x05, 4}, {0x74, 0x83, 0x83, 4},
};

int transfer_mode(Ouint16 controllerType) {
    const unsigned series = controllerType & 0xFFU, variant = controllerType >> 8U;
    const auto known = std::find_if(std::begin(kKnownTypes), std::end(kKnownTypes), [&](const TypeRange& t) {
        return t.series == series && t.firstVariant <= variant && variant <= t.lastVariant;
    });
    if (known != std::end(kKnownTypes)) return known->mode;
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
            align_pixels(m_tranMode)};
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
    convert_pixels(canvas.pixels(), left, canvas.width(), canvas.height(), layout, data.m_pData.get());
    require_success(cairo_status(canvas.context()));
    return data;
}

} // namespace qm
