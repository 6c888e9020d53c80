#include "program/ClockDial.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace qm {
namespace {

constexpr int kHours = 12, kMainHours = 3; // every third mark is a main one

// The sine of an hour's direction, exactly as in every other quarter, so that dials are symmetric.
double sine_of(int hour) {
    constexpr double kQuarter[] = {0, 0.5, std::numbers::sqrt3 / 2, 1};
    const int half = hour % (kHours / 2), quarter = kHours / 4;
    const double sine = kQuarter[half <= quarter ? half : 2 * quarter - half];
    return hour % kHours < kHours / 2 ? sine : -sine;
}

class Direction {
  public:
    explicit Direction(int hour) : m_sin(sine_of(hour)), m_cos(sine_of(hour + kHours / 4)) {}

    [[nodiscard]] int x(int distance) const { return static_cast<int>(std::lround(distance * m_sin)); }
    [[nodiscard]] int y(int distance) const { return static_cast<int>(std::lround(-distance * m_cos)); }
    [[nodiscard]] bool is_upright() const { return std::abs(m_cos) > std::abs(m_sin); }
    // Where the line through the pivot is at a row, for one that is upright, or at a column.
    [[nodiscard]] int across(int along) const {
        return static_cast<int>(std::lround(is_upright() ? -along * m_sin / m_cos : -along * m_cos / m_sin));
    }

  private:
    double m_sin, m_cos;
};

// The size of an hour's mark: of a line its length and how far it reaches to either side of its middle; of a
// square or a disc how far it reaches from its middle pixel.
struct MarkSize {
    int length, side, half;
};

MarkSize mark_size(int radius, bool main) {
    constexpr int kRoomForStrokes = 11; // of a dial of 24 pixels
    const int shortest = radius < kRoomForStrokes ? 1 : 2;
    const int half = std::max(1, radius / 12);
    if (main) return {std::max(shortest + 1, radius / 5), radius / 40, half};
    return {std::max(shortest, radius / 8), radius / 80, half / 2};
}

bool in_disc(int dx, int dy, int half) { return dx * dx + dy * dy <= half * half + half / 2; }

class Marks {
  public:
    Marks(Canvas32& canvas, const ClockDial& dial)
        : m_canvas(canvas), m_dial(dial),
          m_radius(std::min({dial.pivotX, dial.pivotY, canvas.width() - 1 - dial.pivotX,
                             canvas.height() - 1 - dial.pivotY})) {}

    void draw() {
        for (int hour = 0; m_radius > 0 && hour < kHours; ++hour) draw(hour);
    }

  private:
    void draw(int hour) {
        const bool main = hour % kMainHours == 0;
        const MarkSize size = mark_size(m_radius, main);
        const Direction direction(hour);
        set_cairoColor(m_canvas.context(), main ? m_dial.colors.Color369 : m_dial.colors.ColorDot);
        if (m_dial.style == eSQUARE || m_dial.style == eCIRCLE) {
            // Inside the circle, the middles on a common one.
            const int distance = m_radius - mark_size(m_radius, true).half;
            const int x = direction.x(distance), y = direction.y(distance);
            fill_around(x, y, size.half, [&](int dx, int dy) {
                return m_dial.style == eSQUARE || in_disc(dx - x, dy - y, size.half);
            });
        } else {
            draw_line(direction, size);
        }
    }

    // A row or a column a step, so that all of it is equally wide and in the middle of the line.
    void draw_line(const Direction& direction, const MarkSize& size) {
        const bool upright = direction.is_upright();
        const int end = upright ? direction.y(m_radius) : direction.x(m_radius), inward = end < 0 ? 1 : -1;
        const auto length = std::lround(1.0 * size.length * std::abs(end) / m_radius);
        const int steps = std::max(static_cast<int>(length), std::min(2, size.length));
        const int width = 2 * size.side + 1;
        for (int along = end; along != end + inward * steps; along += inward) {
            const int across = direction.across(along) - size.side;
            cairo_rectangle(m_canvas.context(), m_dial.pivotX + (upright ? across : along),
                            m_dial.pivotY + (upright ? along : across), upright ? width : 1,
                            upright ? 1 : width);
        }
        cairo_fill(m_canvas.context());
    }

    // Fills a convex shape within so many pixels of a point, row by row.
    template <class Shape> void fill_around(int x, int y, int reach, Shape&& holds) {
        for (int dy = y - reach; dy <= y + reach; ++dy) {
            int first = x - reach, last = x + reach;
            while (first <= last && !holds(first, dy)) ++first;
            while (first <= last && !holds(last, dy)) --last;
            if (first <= last)
                cairo_rectangle(m_canvas.context(), m_dial.pivotX + first, m_dial.pivotY + dy,
                                last - first + 1, 1);
        }
        cairo_fill(m_canvas.context());
    }

    Canvas32& m_canvas;
    const ClockDial& m_dial;
    int m_radius;
};

} // namespace

void draw_dial(Canvas32& canvas, const ClockDial& dial) {
    set_cairoColor(canvas.context(), dial.colors.ColorBG);
    cairo_paint(canvas.context());
    Marks(canvas, dial).draw();
}

void draw_scaled(Canvas32& canvas, cairo_surface_t* picture) {
    cairo_t* c = canvas.context();
    cairo_save(c);
    cairo_scale(c, 1.0 * canvas.width() / cairo_image_surface_get_width(picture),
                1.0 * canvas.height() / cairo_image_surface_get_height(picture));
    cairo_set_source_surface(c, picture, 0, 0);
    cairo_pattern_set_extend(cairo_get_source(c), CAIRO_EXTEND_PAD); // no dark seam along the edges
    cairo_paint(c);
    cairo_restore(c);
}

} // namespace qm
