// Glyphs as runs of lit pixels: cairo draws a glyph once, and from then on it is drawn by filling its runs,
// as long as there is room for them.
#pragma once

#include "program/text/Face.h"
#include "qm_sdk_dual.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace qm {

// An image of 32-bit pixels that is drawn on in one opaque colour, inside a rectangle of it.
class OneColour {
  public:
    // Takes image, colour and clip, which is a rectangle of whole pixels, from the context; nothing else may
    // draw on the image until this one is destroyed.
    explicit OneColour(cairo_t* c);
    ~OneColour();
    OneColour(const OneColour&) = delete;
    OneColour& operator=(const OneColour&) = delete;

    // The rectangle lies inside the one that is drawn in.
    [[nodiscard]] bool holds(const PixelBox& box) const {
        return box.left >= m_clip.left && box.top >= m_clip.top && box.right <= m_clip.right &&
               box.bottom <= m_clip.bottom;
    }
    // Colours the pixels of a row from column from up to column to, at least one, all of them inside.
    void fill(int y, int from, int to) {
        Ouint32* const row = m_pixels + y * m_stride;
        row[from] = row[to - 1] = m_color; // most runs are a pixel or two
        if (to - from > 2) std::fill(row + from + 1, row + to - 1, m_color);
    }
    // The same for pixels that may lie outside.
    void fill_inside(int y, int from, int to) {
        from = std::max(from, m_clip.left);
        to = std::min(to, m_clip.right);
        if (y >= m_clip.top && y < m_clip.bottom && from < to) fill(y, from, to);
    }

  private:
    cairo_surface_t* m_surface;
    Ouint32* m_pixels;
    std::ptrdiff_t m_stride; // pixels
    Ouint32 m_color;
    PixelBox m_clip;
};

// A glyph of several that are drawn together, around their common origin.
struct GlyphPart {
    unsigned long index;
    int x = 0, y = 0;
};

class GlyphRuns {
  public:
    // Which runs are a glyph's; what they cover around its origin, and the room in which they were found.
    struct Glyph {
        Ouint32 first, count, round;
        PixelBox box, room;
    };

    // Draws glyphs, most often one, that measure box around a common origin, and keeps their runs as those of
    // one glyph. The box grows to what they light: one that cairo makes slanted or bold reaches farther than
    // it measures. Nothing for a glyph that cairo has to draw each time: it is not simply on or off, as
    // coloured and scaled ones are, or too large.
    std::optional<Glyph> add(const Face& face, std::span<const GlyphPart> parts, PixelBox& box);

    // Whether its runs are still there: when they are too many, all of them make room for new ones.
    [[nodiscard]] bool keeps(const Glyph& glyph) const { return glyph.round == m_round; }
    // Finds the runs of a glyph again that has lost them; nothing when cairo cannot.
    std::optional<Glyph> renew(const Face& face, std::span<const GlyphPart> parts, const Glyph& glyph);

    // The runs of a glyph that is kept, turned clockwise by a right angle: pixel x, y becomes right - 1 - y,
    // top + x.
    Glyph turned(const Glyph& glyph, int right, int top);

    // Draws a glyph that is kept, with its origin at x, y.
    void draw(const Glyph& glyph, int x, int y, OneColour& image) const {
        const auto runs = std::span(m_runs).subspan(glyph.first, glyph.count);
        if (image.holds({x + glyph.box.left, y + glyph.box.top, x + glyph.box.right, y + glyph.box.bottom}))
            for (const Run& run : runs) image.fill(y + run.y, x + run.x, x + run.x + run.length);
        else
            for (const Run& run : runs) image.fill_inside(y + run.y, x + run.x, x + run.x + run.length);
    }

  private:
    // Lit pixels side by side, from the glyph's origin.
    struct Run {
        std::int16_t x, y, length;
    };

    Glyph keep(Canvas32& drawing, const PixelBox& room, const PixelBox& box);

    std::vector<Run> m_runs;
    Ouint32 m_round = 0; // counts how often they made room
};

} // namespace qm
