#include "program/GlyphRuns.h"

#include <algorithm>
#include <cmath>

namespace qm {
namespace {

constexpr int kMargin = 2;                    // of what a glyph measures, within which its ink is looked for
constexpr int kFarthest = 0x3FFF;             // from the origin, that a run can say
constexpr std::int64_t kMostPixels = 1 << 20; // of a glyph
constexpr std::size_t kMostRuns = 1 << 18;    // of a font

Ouint32 pixel_of(double red, double green, double blue) {
    const auto byte = [](double component) { return static_cast<Ouint32>(std::lround(255 * component)); };
    return 0xFF000000U | byte(red) << 16U | byte(green) << 8U | byte(blue);
}

Ouint32 source_pixel(cairo_t* c) {
    double red = 0, green = 0, blue = 0, alpha = 0;
    cairo_pattern_get_rgba(cairo_get_source(c), &red, &green, &blue, &alpha);
    return pixel_of(red, green, blue);
}

PixelBox clip_of(cairo_t* c) {
    double left = 0, top = 0, right = 0, bottom = 0;
    cairo_clip_extents(c, &left, &top, &right, &bottom);
    return {static_cast<int>(left), static_cast<int>(top), static_cast<int>(right), static_cast<int>(bottom)};
}

} // namespace

OneColour::OneColour(cairo_t* c)
    : m_surface(cairo_get_target(c)), m_stride(cairo_image_surface_get_stride(m_surface) / 4),
      m_color(source_pixel(c)), m_clip(clip_of(c)) {
    cairo_surface_flush(m_surface);
    m_pixels = reinterpret_cast<Ouint32*>(cairo_image_surface_get_data(m_surface));
}

OneColour::~OneColour() { cairo_surface_mark_dirty(m_surface); }

std::optional<GlyphRuns::Glyph> GlyphRuns::add(cairo_scaled_font_t* font, unsigned long index,
                                               const PixelBox& box) {
    if (std::max({-box.left, -box.top, box.right, box.bottom}) > kFarthest / 2 - kMargin) return {};
    const int slant = std::max({-box.top, box.bottom, 0}) / 2; // is not measured where cairo makes it
    const int left = box.left - slant - kMargin, top = box.top - kMargin; // from the glyph's origin
    const int width = box.right + slant + kMargin - left, height = box.bottom + kMargin - top;
    if (std::int64_t{width} * height > kMostPixels) return {};

    Canvas32 drawing(width, height);
    cairo_t* c = drawing.context();
    const cairo_glyph_t glyph{index, static_cast<double>(-left), static_cast<double>(-top)};
    cairo_set_source_rgb(c, 0.2, 0.4, 0.6); // which a glyph with colours of its own has not all over
    cairo_set_scaled_font(c, font);
    cairo_show_glyphs(c, &glyph, 1);
    const auto first = m_runs.size();
    if (cairo_status(c) == CAIRO_STATUS_SUCCESS && add_lit(drawing, source_pixel(c), left, top))
        return glyph_of(first);
    m_runs.resize(first);
    return {};
}

// Adds the runs of the drawing, whose pixel at the top left has the place left, top. False when it has pixels
// that are neither lit nor empty, when it may be cut, and when there are too many runs.
bool GlyphRuns::add_lit(Canvas32& drawing, Ouint32 lit, int left, int top) {
    const auto* pixel = reinterpret_cast<const Ouint32*>(drawing.pixels());
    const auto first = m_runs.size();
    for (int y = 0; y < drawing.height(); ++y)
        for (int x = 0; x < drawing.width(); ++x, ++pixel) {
            if (*pixel == 0) continue;
            const bool onEdge = x == 0 || y == 0 || x + 1 == drawing.width() || y + 1 == drawing.height();
            if (*pixel != lit || onEdge || !light(first, left + x, top + y)) return false;
        }
    return true;
}

// The glyph whose runs are all from number first on.
GlyphRuns::Glyph GlyphRuns::glyph_of(std::size_t first) const {
    const auto runs = std::span(m_runs).subspan(first);
    PixelBox box{kFarthest, kFarthest, -kFarthest, -kFarthest};
    for (const Run& run : runs) {
        box.left = std::min<int>(box.left, run.x);
        box.top = std::min<int>(box.top, run.y);
        box.right = std::max(box.right, run.x + run.length);
        box.bottom = std::max(box.bottom, run.y + 1);
    }
    return {static_cast<Ouint32>(first), static_cast<Ouint32>(runs.size()), box};
}

// Adds a pixel to the runs of a glyph from number first on; false when there are too many of them.
bool GlyphRuns::light(std::size_t first, int x, int y) {
    if (m_runs.size() > first) {
        Run& last = m_runs.back();
        if (last.y == y && last.x + last.length == x) {
            ++last.length;
            return true;
        }
    }
    if (m_runs.size() == kMostRuns) return false;
    m_runs.push_back({static_cast<std::int16_t>(x), static_cast<std::int16_t>(y), 1});
    return true;
}

} // namespace qm
