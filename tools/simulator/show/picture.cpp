#include "simulator/show/picture.h"

#include <algorithm>
#include <cairo.h>
#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>

namespace qm::sim {
namespace {

constexpr int kSmallestDot = 4; // pixels below which a circle cannot be told from a square
constexpr Rgb kBoard{10, 10, 11}, kDarkLed{30, 30, 33};

// How an LED looks at one pixel of its cell.
struct Shade {
    double lens = 0; // share of the pixel that the LED's lens covers
    double core = 0; // whitening towards the centre of a lit one
    double glow = 0; // light of a lit one that falls on the board
};

// Share of a pixel, with its centre at distance from the centre of a disc, that the disc covers.
double covered(double distance, double radius) { return std::clamp(radius - distance + 0.5, 0.0, 1.0); }

std::vector<Shade> shades_of_cell(int scale) {
    const double middle = scale / 2.0;
    const double radius = scale * 0.42;
    const double corner = scale * 0.71;
    std::vector<Shade> cell;
    for (int y = 0; y < scale; ++y)
        for (int x = 0; x < scale; ++x) {
            const double distance = std::hypot(x + 0.5 - middle, y + 0.5 - middle);
            const double inside = std::max(0.0, 1 - distance / radius);
            const double outside = std::max(0.0, (distance - radius) / (corner - radius));
            cell.push_back({covered(distance, radius), 0.35 * inside, 0.35 * (1 - outside)});
        }
    return cell;
}

std::uint8_t mix(double from, double to, double share) {
    return static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
}

std::uint8_t shaded(std::uint8_t light, std::uint8_t board, std::uint8_t dark, double brightness,
                    const Shade& shade) {
    const double lit = light + (255 - light) * shade.core * brightness;
    const double led = dark + lit * (255 - dark) / 255; // the faintest light can be told from none
    const double around = std::max<double>(board, light * shade.glow);
    return mix(around, led, shade.lens);
}

Rgb shaded(Rgb light, const Shade& shade) {
    const double brightness = std::max({light.r, light.g, light.b}) / 255.0;
    return {shaded(light.r, kBoard.r, kDarkLed.r, brightness, shade),
            shaded(light.g, kBoard.g, kDarkLed.g, brightness, shade),
            shaded(light.b, kBoard.b, kDarkLed.b, brightness, shade)};
}

using Surface = std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)>;

Surface surface_of(const Image& image) {
    Surface surface(cairo_image_surface_create(CAIRO_FORMAT_RGB24, image.width, image.height),
                    &cairo_surface_destroy);
    unsigned char* row = cairo_image_surface_get_data(surface.get());
    if (!row) return surface;
    for (int y = 0; y < image.height; ++y, row += cairo_image_surface_get_stride(surface.get())) {
        unsigned char* out = row;
        for (int x = 0; x < image.width; ++x, out += 4) {
            const Rgb pixel = image.at(x, y);
            out[0] = pixel.b;
            out[1] = pixel.g;
            out[2] = pixel.r;
        }
    }
    cairo_surface_mark_dirty(surface.get());
    return surface;
}

} // namespace

Image led_panel(const Image& screen, int scale) {
    if (scale == 1) return screen;
    const std::vector<Shade> cell = shades_of_cell(scale);
    Image panel(screen.width * scale, screen.height * scale);
    for (int y = 0; y < panel.height; ++y)
        for (int x = 0; x < panel.width; ++x) {
            const Rgb light = screen.at(x / scale, y / scale);
            const std::size_t row = static_cast<std::size_t>(y % scale) * static_cast<std::size_t>(scale);
            const Shade& shade = cell[row + static_cast<std::size_t>(x % scale)];
            panel.set(x, y, scale < kSmallestDot ? light : shaded(light, shade));
        }
    return panel;
}

std::vector<std::uint8_t> png_of(const Image& image) {
    std::vector<std::uint8_t> bytes;
    const auto append = [](void* to, const unsigned char* data, unsigned length) {
        auto& out = *static_cast<std::vector<std::uint8_t>*>(to);
        out.insert(out.end(), data, data + length);
        return CAIRO_STATUS_SUCCESS;
    };
    const Surface surface = surface_of(image);
    const cairo_status_t status = cairo_surface_write_to_png_stream(surface.get(), append, &bytes);
    if (status != CAIRO_STATUS_SUCCESS)
        throw std::runtime_error(std::string("cannot make the picture: ") + cairo_status_to_string(status));
    return bytes;
}

void write_png(const Image& image, const std::filesystem::path& path) {
    const Surface surface = surface_of(image);
    std::filesystem::path part = path;
    part += ".part";
    const cairo_status_t status = cairo_surface_write_to_png(surface.get(), part.c_str());
    std::error_code error;
    if (status == CAIRO_STATUS_SUCCESS) std::filesystem::rename(part, path, error);
    if (status != CAIRO_STATUS_SUCCESS || error)
        throw std::runtime_error("cannot write the picture " + path.string() + ": " +
                                 (error ? error.message() : cairo_status_to_string(status)));
}

} // namespace qm::sim
