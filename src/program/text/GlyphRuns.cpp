#include "program/text/GlyphRuns.h"

#include <algorithm>
#include <cmath>

namespace qm {
namespace {

constexpr int kFarthest = 0x3FFF; // from the origin, that a run can say
constexpr std::int64_t kMostGlyphPixels = 1 << 20;
constexpr std::size_t kMostRuns = 1 << 19; // of a font

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

// Draws the glyphs alone, in a colour that a glyph with colours of its own would not have everywhere. False
// when that cannot be done.
bool draw_alone(Canvas32& drawing, const Face& face, std::span<const GlyphPart> parts, const PixelBox& room) {
    cairo_set_source_rgb(drawing.context(), 0.2, 0.4, 0.6);
    return std::all_of(parts.begin(), parts.end(), [&](const GlyphPart& part) {
        return face.draw(drawing.context(), part.index, part.x - room.left, part.y - room.top);
    });
}

struct Ink {
    PixelBox box{kFarthest, kFarthest, -kFarthest, -kFarthest};
    bool oneColour = true;
};

// The box around the ink of a drawing whose top left pixel is that of room.
Ink ink_of(Canvas32& drawing, const PixelBox& room) {
    const Ouint32 lit = source_pixel(drawing.context());
    const auto* pixel = reinterpret_cast<const Ouint32*>(drawing.pixels());
    Ink ink;
    for (int y = room.top; y < room.bottom; ++y)
        for (int x = room.left; x < room.right; ++x, ++pixel) {
            if (*pixel == 0) continue;
            ink.oneColour = ink.oneColour && *pixel == lit;
            ink.box = {std::min(ink.box.left, x), std::min(ink.box.top, y), std::max(ink.box.right, x + 1),
                       std::max(ink.box.bottom, y + 1)};
        }
    return ink;
}

// What touches the edge may be cut.
bool is_inside(const PixelBox& box, const PixelBox& room) {
    return box.left > room.left && box.top > room.top && box.right < room.right && box.bottom < room.bottom;
}

Canvas32 canvas_for(const PixelBox& room) { return {room.right - room.left, room.bottom - room.top}; }

} // namespace

OneColour::OneColour(cairo_t* c)
    : m_surface(cairo_get_target(c)), m_stride(cairo_image_surface_get_stride(m_surface) / 4),
      m_color(source_pixel(c)), m_clip(clip_of(c)) {
    cairo_surface_flush(m_surface);
    m_pixels = reinterpret_cast<Ouint32*>(cairo_image_surface_get_data(m_surface));
}

OneColour::~OneColour() { cairo_surface_mark_dirty(m_surface); }

std::optional<GlyphRuns::Glyph> GlyphRuns::add(const Face& face, std::span<const GlyphPart> parts,
                                               PixelBox& box) {
    if (std::max({-box.left, -box.top, box.right, box.bottom}) > kFarthest / 2) return {};
    const PixelBox room = face.room_for(box);
    if (std::int64_t{room.right - room.left} * (room.bottom - room.top) > kMostGlyphPixels) return {};
    Canvas32 drawing = canvas_for(room);
    if (!draw_alone(drawing, face, parts, room)) return {};
    const Ink ink = ink_of(drawing, room);
    if (ink.box.empty()) return keep(drawing, room, {});
    box = {std::min(box.left, ink.box.left), std::min(box.top, ink.box.top),
           std::max(box.right, ink.box.right), std::max(box.bottom, ink.box.bottom)};
    if (!ink.oneColour || !is_inside(ink.box, room)) return {};
    return keep(drawing, room, ink.box);
}

std::optional<GlyphRuns::Glyph> GlyphRuns::renew(const Face& face, std::span<const GlyphPart> parts,
                                                 const Glyph& glyph) {
    Canvas32 drawing = canvas_for(glyph.room);
    if (!draw_alone(drawing, face, parts, glyph.room)) return {};
    return keep(drawing, glyph.room, glyph.box);
}

GlyphRuns::Glyph GlyphRuns::turned(const Glyph& glyph, int right, int top) {
    const PixelBox& from = glyph.box;
    const PixelBox box{right - from.bottom, top + from.left, right - from.top, top + from.right};
    if (box.empty()) return glyph;
    Canvas32 drawing = canvas_for(box);
    {
        OneColour image(drawing.context());
        for (const Run& run : std::span(m_runs).subspan(glyph.first, glyph.count))
            for (int x = run.x; x < run.x + run.length; ++x)
                image.fill(top + x - box.top, right - 1 - run.y - box.left, right - run.y - box.left);
    }
    return keep(drawing, box, box);
}

// Keeps the runs of a drawing, in which all ink is in the box.
GlyphRuns::Glyph GlyphRuns::keep(Canvas32& drawing, const PixelBox& room, const PixelBox& box) {
    if (m_runs.size() >= kMostRuns) {
        m_runs.clear();
        ++m_round;
    }
    const auto first = m_runs.size();
    const auto* pixels = reinterpret_cast<const Ouint32*>(drawing.pixels());
    for (int y = box.top; y < box.bottom; ++y) {
        const Ouint32* row = pixels + std::ptrdiff_t{y - room.top} * drawing.width();
        for (int x = box.left; x < box.right; ++x) {
            const int begin = x;
            while (x < box.right && row[x - room.left] != 0) ++x;
            if (x > begin)
                m_runs.push_back({static_cast<std::int16_t>(begin), static_cast<std::int16_t>(y),
                                  static_cast<std::int16_t>(x - begin)});
        }
    }
    return {static_cast<Ouint32>(first), static_cast<Ouint32>(m_runs.size() - first), m_round, box, room};
}

} // namespace qm
