#include "panel_picture.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string_view>

namespace qm::sign {
namespace {

constexpr unsigned kDarkest = 96; // up to which a channel stays dark where LEDs are on or off

// The pixel in colours of 0 or 255, its channels in the order of cairo's 24 bits.
std::uint32_t lit(std::uint32_t pixel, E_ScreenColor_G56 screen) {
    const auto shines = [pixel](unsigned shift) { return (pixel >> shift & 0xFFU) > kDarkest; };
    bool red = shines(16), green = shines(8), blue = shines(0);
    if (screen == SCREEN_COLOR_SINGLE) red = red || green || blue;
    if (screen == SCREEN_COLOR_DOUBLE) red = red || (blue && !green);
    green = green && screen != SCREEN_COLOR_SINGLE;
    blue = blue && screen == SCREEN_COLOR_THREE;
    return (red ? 0xFF0000U : 0U) | (green ? 0xFF00U : 0U) | (blue ? 0xFFU : 0U);
}

} // namespace

bool is_drawable(const std::string& path, const Size& size) {
    constexpr std::uint64_t kMostPixels = 64'000'000;
    if (std::uint64_t{size.width} * size.height > kMostPixels) return false;
    const Surface picture(cairo_image_surface_create_from_png(path.c_str()));
    return cairo_surface_status(picture.get()) == CAIRO_STATUS_SUCCESS;
}

Surface picture_of(const std::string& png) {
    struct Reader {
        std::string_view rest;
        static cairo_status_t read(void* self, unsigned char* out, unsigned length) {
            std::string_view& rest = static_cast<Reader*>(self)->rest;
            if (rest.size() < length) return CAIRO_STATUS_READ_ERROR;
            std::copy_n(rest.begin(), length, out);
            rest.remove_prefix(length);
            return CAIRO_STATUS_SUCCESS;
        }
    } reader{png};
    return Surface(cairo_image_surface_create_from_png_stream(Reader::read, &reader));
}

std::string png_of(cairo_surface_t* picture) {
    std::string png;
    const auto append = [](void* out, const unsigned char* data, unsigned length) {
        static_cast<std::string*>(out)->append(reinterpret_cast<const char*>(data), length);
        return CAIRO_STATUS_SUCCESS;
    };
    if (cairo_surface_write_to_png_stream(picture, append, &png) != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error("the preview cannot be drawn");
    return png;
}

Surface opaque_picture(int width, int height) {
    return Surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, width, height));
}

Surface opaque(const Surface& picture) {
    Surface black = opaque_picture(cairo_image_surface_get_width(picture.get()),
                                   cairo_image_surface_get_height(picture.get()));
    const Context context(cairo_create(black.get()));
    cairo_set_source_surface(context.get(), picture.get(), 0, 0);
    cairo_paint(context.get());
    return black;
}

void light(cairo_surface_t* picture, E_ScreenColor_G56 screen) {
    if (screen == SCREEN_COLOR_FULLCOLOR) return;
    cairo_surface_flush(picture);
    unsigned char* row = cairo_image_surface_get_data(picture);
    for (int y = 0; y < cairo_image_surface_get_height(picture); ++y) {
        auto* pixels = reinterpret_cast<std::uint32_t*>(row);
        std::transform(pixels, pixels + cairo_image_surface_get_width(picture), pixels,
                       [screen](std::uint32_t pixel) { return lit(pixel, screen); });
        row += cairo_image_surface_get_stride(picture);
    }
    cairo_surface_mark_dirty(picture);
}

std::string on_panel(const std::string& png, E_ScreenColor_G56 screen) {
    const Surface panel = opaque(picture_of(png));
    light(panel.get(), screen);
    return png_of(panel.get());
}

} // namespace qm::sign
