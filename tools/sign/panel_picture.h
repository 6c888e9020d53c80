// Pictures as a screen shows them.
#pragma once

#include "qm_sdk_dual.hpp"

#include <cairo.h>

#include <memory>
#include <string>

namespace qm::sign {

struct CairoCloser {
    void operator()(cairo_surface_t* surface) const { cairo_surface_destroy(surface); }
    void operator()(cairo_t* context) const { cairo_destroy(context); }
    void operator()(cairo_pattern_t* pattern) const { cairo_pattern_destroy(pattern); }
};
using Surface = std::unique_ptr<cairo_surface_t, CairoCloser>;
using Context = std::unique_ptr<cairo_t, CairoCloser>;
using Pattern = std::unique_ptr<cairo_pattern_t, CairoCloser>;

// Whether the library can draw the picture in a PNG file of that size.
[[nodiscard]] bool is_drawable(const std::string& path, const Size& size);

// The picture in a PNG file of these bytes, and the bytes of a picture's.
[[nodiscard]] Surface picture_of(const std::string& png);
[[nodiscard]] std::string png_of(cairo_surface_t* picture);

// Black.
[[nodiscard]] Surface opaque_picture(int width, int height);
// A picture on black.
[[nodiscard]] Surface opaque(const Surface& picture);

// Gives the pixels of an opaque picture the colours that the LEDs of a screen shine in at full brightness.
// LEDs of a single colour are drawn red.
void light(cairo_surface_t* picture, E_ScreenColor_G56 screen);

// A PNG file of what the screen shows of one.
[[nodiscard]] std::string on_panel(const std::string& png, E_ScreenColor_G56 screen);

} // namespace qm::sign
