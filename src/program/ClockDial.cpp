#include "program/ClockDial.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <numbers>

namespace qm {
namespace {

constexpr int kHours = 12, kMainHours = 3; // every third mark is a main one
constexpr double kThin = 0.5;              // half of a width of one pixel

// A pixel as it is seen from the pivot in the direction of an hour.
struct Bearing {
    double along, across;
};

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

    [[nodiscard]] Bearing of(int dx, int dy) const {
        return {dx * m_sin - dy * m_cos, dx * m_cos + dy * m_sin};
    }
    [[nodiscard]] int x(int distance) const { return static_cast<int>(std::lround(distance * m_sin)); }
    [[nodiscard]] int y(int distance) const { return static_cast<int>(std::lround(-distance * m_cos)); }

  private:
    double m_sin, m_cos;
};

// The size of an hour's mark: of a line its length and half of its width; of a square or a disc how far it
// reaches from its middle pixel.
struct MarkSize {
    int length;
    double halfWidth;
    int half;
};

MarkSize mark_size(int radius, bool main) {
    if (main) return {std::max(2, radius / 5), std::max(kThin, radius / 40.0), std::max(1, radius / 12)};
    return {std::max(1, radius / 8), std::max(kThin, radius / 80.0), std::max(1, radius / 12) / 2};
}

bool in_line(const Bearing& b, int radius, const MarkSize& size) {
    constexpr double kRounding = 0.5; // of pixels on the circle
    return b.along > radius - size.length + kRounding && b.along < radius + kRounding &&
           std::abs(b.across) <= size.halfWidth + 1e-9;
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

    // A line of one pixel a step, and where it is wider than that, every pixel inside it.
    void draw_line(const Direction& direction, const MarkSize& size) {
        for (int distance = m_radius; distance > m_radius - size.length; --distance)
            fill_around(direction.x(distance), direction.y(distance), 0, [](int, int) { return true; });
        if (size.halfWidth <= kThin) return;
        const int middle = m_radius - size.length / 2;
        const int reach = size.length / 2 + static_cast<int>(size.halfWidth) + 2;
        fill_around(direction.x(middle), direction.y(middle), reach,
                    [&](int dx, int dy) { return in_line(direction.of(dx, dy), m_radius, size); });
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
