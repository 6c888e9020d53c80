#include "program/HVframe.h"

#include "program/ScreenSettings.h"
#include "support/message.h"

namespace qm {

std::unique_ptr<Canvas32> load_picture(const std::string& picPath) {
    const SurfacePtr picture(cairo_image_surface_create_from_png(picPath.c_str()));
    if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS) return nullptr;
    auto canvas = std::make_unique<Canvas32>(cairo_image_surface_get_width(picture.get()),
                                             cairo_image_surface_get_height(picture.get()));
    cairo_set_source_surface(canvas->context(), picture.get(), 0, 0);
    cairo_paint(canvas->context());
    return canvas;
}

std::optional<HVframe> HVframe::load(const std::string& picPath) {
    const std::unique_ptr<Canvas32> picture = load_picture(picPath);
    if (!picture) {
        say("Error:Can't find frame png.\n");
        return std::nullopt;
    }
    return HVframe{picture->width(), picture->height(), convert_canvas(*picture, 0)};
}

} // namespace qm
