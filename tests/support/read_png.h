// A picture in a file, which has no half-transparent pixels.
#pragma once

#include "simulator/playback/Image.h"

#include <cairo.h>
#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace qm::test {

inline sim::Image read_png(const std::string& path, cairo_format_t format = CAIRO_FORMAT_RGB24) {
    const std::unique_ptr<cairo_surface_t, decltype(&cairo_surface_destroy)> png(
        cairo_image_surface_create_from_png(path.c_str()), cairo_surface_destroy);
    EXPECT_EQ(cairo_image_surface_get_format(png.get()), format) << path;
    sim::Image image(cairo_image_surface_get_width(png.get()), cairo_image_surface_get_height(png.get()));
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) {
            const unsigned char* pixel = cairo_image_surface_get_data(png.get()) +
                                         y * cairo_image_surface_get_stride(png.get()) + 4 * x;
            image.set(x, y, {pixel[2], pixel[1], pixel[0]});
        }
    return image;
}

} // namespace qm::test
