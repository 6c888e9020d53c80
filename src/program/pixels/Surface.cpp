#include "program/pixels/Surface.h"

#include "support/reason.h"

#include <cstring>
#include <new>
#include <stdexcept>

namespace qm {

Canvas32::Canvas32(int width, int height)
    : m_width(width), m_height(height),
      m_surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height)),
      m_context(cairo_create(m_surface.get())) {
    require_success(cairo_status(m_context.get()));
    cairo_set_antialias(m_context.get(), CAIRO_ANTIALIAS_NONE);
    disable_antialias(m_context.get());
}

void Canvas32::clear() {
    cairo_surface_t* image = m_surface.get();
    cairo_surface_flush(image);
    const auto size =
        static_cast<std::size_t>(cairo_image_surface_get_stride(image)) * static_cast<std::size_t>(m_height);
    std::memset(cairo_image_surface_get_data(image), 0, size);
    cairo_surface_mark_dirty(image);
}

const unsigned char* Canvas32::pixels() {
    require_memory(cairo_status(m_context.get()));
    cairo_surface_flush(m_surface.get());
    return cairo_image_surface_get_data(m_surface.get());
}

std::vector<unsigned char> Canvas32::png() const {
    require_memory(cairo_status(m_context.get()));
    std::vector<unsigned char> png;
    const auto append = [](void* out, const unsigned char* data, unsigned length) noexcept {
        auto& bytes = *static_cast<std::vector<unsigned char>*>(out);
        try {
            bytes.insert(bytes.end(), data, data + length);
            return CAIRO_STATUS_SUCCESS;
        } catch (...) { // which may not pass through cairo
            return CAIRO_STATUS_NO_MEMORY;
        }
    };
    const cairo_status_t status = cairo_surface_write_to_png_stream(m_surface.get(), append, &png);
    if (status == CAIRO_STATUS_SUCCESS) return png;
    (void)fail_by_memory(); // whatever it is called: all else has been seen to
    return {};
}

void require_memory(cairo_status_t status) {
    if (status == CAIRO_STATUS_NO_MEMORY) throw std::bad_alloc();
}

void require_success(cairo_status_t status) {
    require_memory(status);
    if (status != CAIRO_STATUS_SUCCESS) throw std::runtime_error(cairo_status_to_string(status));
}

Oint8 set_cairoColor(cairo_t* c, Ouint32 color) {
    if (color < 8) {
        // Bit 0 of a palette index is red, bit 1 green, bit 2 blue.
        cairo_set_source_rgb(c, color & 1U, color >> 1U & 1U, color >> 2U & 1U);
        return 0;
    }
    const auto component = [color](unsigned shift) {
        return static_cast<double>(static_cast<float>((color >> shift & 0xFFU) / 255.0));
    };
    cairo_set_source_rgb(c, component(16), component(8), component(0));
    return 0;
}

void disable_antialias(cairo_t* context) {
    cairo_font_options_t* options = cairo_font_options_create();
    cairo_get_font_options(context, options);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_NONE);
    cairo_set_font_options(context, options);
    cairo_font_options_destroy(options);
}

} // namespace qm
