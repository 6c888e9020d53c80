#include "drawing.h"

#include "simulator/protocol/PixelFormat.h"

#include <cairo.h>
#include <cmath>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1";
constexpr char kFont[] = "DejaVu Sans";
constexpr int kThreshold = 96;

// The controllers' gamma of 2, then as many bits as the 16-bit pixel has for the channel.
std::uint8_t graded(std::uint8_t level, int bits) {
    const double base = (level + 0.5) / 256.0;
    const int corrected = std::max(0, static_cast<int>(256.0 * base * base - 0.5));
    const int kept = corrected >> (8 - bits);
    return static_cast<std::uint8_t>(kept << (8 - bits) | kept >> (2 * bits - 8));
}

std::uint8_t on_off(bool lit) { return lit ? 255 : 0; }

sim::Image copy_of(cairo_surface_t* surface, int width, int height) {
    cairo_surface_flush(surface);
    sim::Image image(width, height);
    for (int y = 0; y < height; ++y) {
        const unsigned char* p =
            cairo_image_surface_get_data(surface) + y * cairo_image_surface_get_stride(surface);
        for (int x = 0; x < width; ++x, p += 4) image.set(x, y, {p[2], p[1], p[0]});
    }
    return image;
}

} // namespace

sim::Rgb shown_by(Leds leds, sim::Rgb pixel) {
    const bool r = pixel.r > kThreshold, g = pixel.g > kThreshold, b = pixel.b > kThreshold;
    switch (leds) {
    case Leds::single:
        return {on_off(r || g || b), 0, 0};
    case Leds::dual:
        return {on_off(r || (b && !g)), on_off(g), 0};
    case Leds::three:
        return {on_off(r), on_off(g), on_off(b)};
    case Leds::full565:
        return {graded(pixel.r, 5), graded(pixel.g, 6), graded(pixel.b, 5)};
    case Leds::full888:
        break;
    }
    return pixel;
}

Leds leds_of(sim::PixelFormat format) {
    if (format.color == sim::ScreenColor::full)
        return format.mode == sim::TransferMode::rgb888 ? Leds::full888 : Leds::full565;
    return static_cast<Leds>(static_cast<int>(format.color) - 1);
}

sim::Image text_image(const std::string& family, double size, const std::string& text, sim::Rgb color,
                      int width, int height, TextPlace place) {
    cairo_surface_t* surface = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
    cairo_t* c = cairo_create(surface);
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_NONE);
    cairo_set_font_options(c, options);
    cairo_font_options_destroy(options);
    cairo_select_font_face(c, family.c_str(), CAIRO_FONT_SLANT_NORMAL,
                           place.bold ? CAIRO_FONT_WEIGHT_BOLD : CAIRO_FONT_WEIGHT_NORMAL);
    const cairo_matrix_t matrix{size, 0, place.slanted ? -0.2 * size : 0, size, 0, 0};
    cairo_set_font_matrix(c, &matrix);
    cairo_font_extents_t extents;
    cairo_font_extents(c, &extents);
    cairo_set_source_rgb(c, color.r / 255.0, color.g / 255.0, color.b / 255.0);
    cairo_move_to(c, place.x, place.baseline < 0 ? std::round(extents.ascent) : place.baseline);
    cairo_show_text(c, text.c_str());
    cairo_destroy(c);
    sim::Image image = copy_of(surface, width, height);
    cairo_surface_destroy(surface);
    return image;
}

sim::Image on_screen(const sim::Image& picture, Leds leds, int x, int y, int width, int height) {
    sim::Image screen(width, height);
    for (int row = 0; row < picture.height && y + row < height; ++row)
        for (int column = 0; column < picture.width && x + column < width; ++column)
            screen.set(x + column, y + row, shown_by(leds, picture.at(column, row)));
    return screen;
}

int differing_pixels(const sim::Image& a, const sim::Image& b) {
    if (a.width != b.width || a.height != b.height) return -1;
    int count = 0;
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x) count += a.at(x, y) != b.at(x, y);
    return count;
}

int lit_pixels(const sim::Image& image) {
    return differing_pixels(image, sim::Image(image.width, image.height));
}

HVpageHeader_G6 still_text(Ouint16 points, Ouint32 color) {
    HVpageHeader_G6 page{};
    page.DisplayMode = 1;
    page.arrMode = MULTILINE;
    page.fontSize = points;
    page.color = color;
    return page;
}

HVareaHeader_G6 rectangle(Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height) {
    HVareaHeader_G6 area{};
    area.AreaX = x;
    area.AreaY = y;
    area.AreaWidth = width;
    area.AreaHeight = height;
    return area;
}

int show_text(const sim::Simulator& sim, Ouint16 type, Ouint32 color, HVareaHeader_G6 area,
              HVpageHeader_G6 page, const char* text) {
    const auto leds = static_cast<E_ScreenColor_G56>(color);
    if (generation_of(type) != Generation::five)
        return dynamicArea_AddAreaTxtDetails_6G(kHost, sim.port(), leds, 0, &area, &page, kFont, text);
    const HVfontData font{page.arrMode,    page.fontSize, page.color,  page.fontBold, page.fontItalic,
                          page.tdirection, page.txtSpace, page.Halign, page.Valign};
    return dynamicArea_AddAreaWithTxt_5G(kHost, sim.port(), leds, 0, 0, 0, 1, 0, nullptr, 1, area.AreaX,
                                         area.AreaY, area.AreaWidth, area.AreaHeight, {}, page.DisplayMode,
                                         page.ClearMode, page.Speed, page.StayTime, page.RepeatTime, font,
                                         kFont, text);
}

int show_picture(const sim::Simulator& sim, Ouint16 type, Ouint32 color, HVareaHeader_G6 area,
                 HVpageHeader_G6 page, const char* path) {
    const auto leds = static_cast<E_ScreenColor_G56>(color);
    if (generation_of(type) != Generation::five)
        return dynamicArea_AddAreaPic_6G(kHost, sim.port(), leds, 0, area.AreaX, area.AreaY, area.AreaWidth,
                                         area.AreaHeight, &page, path);
    return dynamicArea_AddAreaWithPic_5G(kHost, sim.port(), leds, 0, 0, 0, 1, 0, nullptr, 1, area.AreaX,
                                         area.AreaY, area.AreaWidth, area.AreaHeight, {}, page.DisplayMode,
                                         page.ClearMode, page.Speed, page.StayTime, page.RepeatTime, path);
}

} // namespace qm::test
