#include "ProgramOverview.h"

#include "panel_picture.h"

#include <algorithm>
#include <numbers>

namespace qm::sign {
namespace {

constexpr unsigned kLed = 4, kGap = 12; // pixels of the overview
constexpr std::size_t kMostScreens = 16;
constexpr unsigned kHighest = 32000; // cairo's pictures end at 32767

class Canvas {
  public:
    explicit Canvas(const Size& size)
        : m_surface(opaque_picture(static_cast<int>(size.width), static_cast<int>(size.height))),
          m_context(cairo_create(m_surface.get())) {}

    void page(const AreaPages& area, std::size_t number) {
        const Surface picture = picture_of(area.pages[number % area.pages.size()]);
        cairo_set_source_surface(context(), picture.get(), area.rect.x, area.rect.y);
        cairo_paint(context());
    }

    // The pattern along the four sides, turned as it goes round. Top and bottom own the corners.
    void draw_border(const Border& border, const Rect& rect) {
        const Surface picture = opaque(Surface(cairo_image_surface_create_from_png(border.picture.c_str())));
        const Pattern pattern(cairo_pattern_create_for_surface(picture.get()));
        cairo_pattern_set_extend(pattern.get(), CAIRO_EXTEND_REPEAT);
        cairo_pattern_set_filter(pattern.get(), CAIRO_FILTER_NEAREST);
        const double w = rect.width, h = rect.height;
        const struct {
            double x, y, before; // its corner of the rectangle, and the length of the sides before it
        } sides[] = {{0, 0, 0}, {w, 0, w}, {w, h, w + h}, {0, h, w + h + w}};
        for (const int side : {1, 3, 0, 2}) {
            cairo_save(context());
            cairo_translate(context(), rect.x + sides[side].x, rect.y + sides[side].y);
            cairo_rotate(context(), side * std::numbers::pi / 2);
            cairo_rectangle(context(), 0, 0, side % 2 ? h : w, border.size.height);
            cairo_matrix_t along;
            cairo_matrix_init_translate(&along, sides[side].before, 0);
            cairo_pattern_set_matrix(pattern.get(), &along);
            cairo_set_source(context(), pattern.get());
            cairo_fill(context());
            cairo_restore(context());
        }
    }

    [[nodiscard]] cairo_t* context() const { return m_context.get(); }
    [[nodiscard]] cairo_surface_t* surface() const { return m_surface.get(); }

  private:
    Surface m_surface;
    Context m_context;
};

Canvas draw_screen(const ProgramDescription& program, const Screen& target,
                   const std::vector<AreaPages>& pages, std::size_t number) {
    Canvas screen(target.size);
    for (const AreaPages& area : pages) screen.page(area, number);
    for (const AreaDescription& area : program.areas)
        if (area.border) screen.draw_border(*area.border, *area.rect);
    if (program.border) screen.draw_border(*program.border, whole(target.size));
    light(screen.surface(), target.color);
    return screen;
}

// Dark lines between the LEDs.
void draw_grid(cairo_t* context, unsigned width, unsigned height) {
    cairo_set_source_rgb(context, 0, 0, 0);
    for (unsigned x = 0; x < width; ++x) cairo_rectangle(context, x * kLed, 0, 1, height * kLed);
    for (unsigned y = 0; y < height; ++y) cairo_rectangle(context, 0, y * kLed, width * kLed, 1);
    cairo_fill(context);
}

void place(cairo_t* context, const Canvas& screen, const Size& size, unsigned top) {
    cairo_save(context);
    cairo_translate(context, 0, top);
    cairo_save(context);
    cairo_scale(context, kLed, kLed);
    cairo_set_source_surface(context, screen.surface(), 0, 0);
    cairo_pattern_set_filter(cairo_get_source(context), CAIRO_FILTER_NEAREST);
    cairo_paint(context);
    cairo_restore(context);
    draw_grid(context, size.width, size.height);
    cairo_restore(context);
}

} // namespace

std::string draw_overview(const ProgramDescription& program, const Screen& target,
                          const std::vector<AreaPages>& pages) {
    std::size_t screens = 1;
    for (const AreaPages& area : pages) screens = std::max(screens, area.pages.size());
    const unsigned pitch = target.size.height * kLed + kGap;
    screens = std::min({screens, kMostScreens, std::size_t{std::max(1U, kHighest / pitch)}});

    const auto width = static_cast<int>(target.size.width * kLed);
    const auto height = static_cast<int>(screens * pitch - kGap);
    const Surface surface = opaque_picture(width, height);
    const Context context(cairo_create(surface.get()));
    cairo_set_source_rgb(context.get(), 1, 1, 1);
    cairo_paint(context.get());
    for (std::size_t i = 0; i < screens; ++i)
        place(context.get(), draw_screen(program, target, pages, i), target.size,
              static_cast<unsigned>(i) * pitch);
    return png_of(surface.get());
}

} // namespace qm::sign
