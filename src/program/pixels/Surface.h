// Owned cairo objects, and the one place where drawing contexts are made.
#pragma once

#include "qm_sdk_dual.h"

#include <cairo.h>

#include <memory>
#include <vector>

namespace qm {

template <auto Destroy> struct CairoDeleter {
    template <class T> void operator()(T* object) const { Destroy(object); }
};
using SurfacePtr = std::unique_ptr<cairo_surface_t, CairoDeleter<cairo_surface_destroy>>;
using ContextPtr = std::unique_ptr<cairo_t, CairoDeleter<cairo_destroy>>;
using FontFacePtr = std::unique_ptr<cairo_font_face_t, CairoDeleter<cairo_font_face_destroy>>;
using ScaledFontPtr = std::unique_ptr<cairo_scaled_font_t, CairoDeleter<cairo_scaled_font_destroy>>;

// A black 32-bit image with a context that draws on it without antialiasing, so that every pixel is fully
// on or off. Throws when the size is more than cairo can hold.
class Canvas32 {
  public:
    Canvas32(int width, int height);

    [[nodiscard]] cairo_t* context() const { return m_context.get(); }
    [[nodiscard]] cairo_surface_t* surface() const { return m_surface.get(); }
    [[nodiscard]] int width() const { return m_width; }
    [[nodiscard]] int height() const { return m_height; }

    void clear();
    // The pixels, rows of 4 * width bytes (blue, green, red, alpha); valid until the next drawing.
    [[nodiscard]] const unsigned char* pixels();
    // The drawing as a PNG file; empty when that fails.
    [[nodiscard]] std::vector<unsigned char> png() const;

  private:
    int m_width, m_height;
    SurfacePtr m_surface;
    ContextPtr m_context;
};

// Throws for every status but success, or for exhausted memory alone.
void require_success(cairo_status_t status);
void require_memory(cairo_status_t status);

// Sets the source colour: a palette index below 8, else 0xRRGGBB. Always 0.
Oint8 set_cairoColor(cairo_t* c, Ouint32 color);

// Sets antialiasing to none on a context, its other font options untouched.
void disable_antialias(cairo_t* context);

} // namespace qm
