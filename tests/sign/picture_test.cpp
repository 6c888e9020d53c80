// Where pictures lie in their rectangles, and which shades become which dots.
#include "sign/PictureFit.h"
#include "sign/dithering.h"
#include "sign/panel_picture.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace qm::sign {
namespace {

TEST(PictureFit, ScalesAndPlaces) {
    constexpr Size panel{128, 32};
    using Box = std::array<std::int64_t, 4>;
    const struct {
        Size picture, area;
        Fit fit;
        Box placed, seen;
    } cases[] = {
        {{200, 100}, panel, Fit::none, {0, 0, 200, 100}, {0, 0, 128, 32}},
        {{3, 2}, panel, Fit::none, {0, 0, 3, 2}, {0, 0, 3, 2}},
        {{200, 100}, panel, Fit::contain, {32, 0, 64, 32}, {32, 0, 64, 32}},
        {{16, 16}, panel, Fit::contain, {48, 0, 32, 32}, {48, 0, 32, 32}},
        {{400, 50}, panel, Fit::contain, {0, 8, 128, 16}, {0, 8, 128, 16}},
        {{128, 32}, panel, Fit::contain, {0, 0, 128, 32}, {0, 0, 128, 32}},
        {{9000, 2}, panel, Fit::contain, {0, 15, 128, 1}, {0, 15, 128, 1}},
        {{3, 2}, {8, 4}, Fit::contain, {1, 0, 6, 4}, {1, 0, 6, 4}},
        {{200, 100}, panel, Fit::cover, {0, -16, 128, 64}, {0, 0, 128, 32}},
        {{400, 50}, panel, Fit::cover, {-64, 0, 256, 32}, {0, 0, 128, 32}},
        {{33, 32}, {32, 32}, Fit::cover, {0, 0, 33, 32}, {0, 0, 32, 32}},
        {{3, 2}, {8, 4}, Fit::cover, {0, 0, 8, 5}, {0, 0, 8, 4}},
        {{3, 2}, {8, 4}, Fit::stretch, {0, 0, 8, 4}, {0, 0, 8, 4}},
        {{64'000'000, 1}, {8, 4}, Fit::cover, {-127'999'996, 0, 256'000'000, 4}, {0, 0, 8, 4}},
    };
    const auto box = [](const Placement& p) { return Box{p.x, p.y, p.width, p.height}; };
    for (const auto& c : cases) {
        const Placement placed = place(c.picture, c.area, c.fit);
        EXPECT_EQ(box(placed), c.placed) << to_string(c.picture) << " in " << to_string(c.area);
        EXPECT_EQ(box(visible(placed, c.area)), c.seen) << to_string(c.picture);
    }
}

// Pixels of red, green and blue, of which color gives each.
struct Picture {
    template <class Color> Picture(unsigned w, unsigned h, Color color) : width(w), height(h) {
        for (unsigned y = 0; y < h; ++y)
            for (unsigned x = 0; x < w; ++x)
                for (const unsigned value : color(x, y)) bytes.push_back(static_cast<std::uint8_t>(value));
    }
    void dither(E_ScreenColor_G56 screen) {
        sign::dither({bytes.data(), width, height, std::size_t{3} * width}, screen);
    }
    // Of 0 to 1, in linear light, over columns from the first one on.
    [[nodiscard]] double mean(unsigned channel, unsigned first, unsigned columns) const {
        double sum = 0;
        for (unsigned y = 0; y < height; ++y)
            for (unsigned x = first; x < first + columns; ++x)
                sum += std::pow(bytes[3 * (y * width + x) + channel] / 255.0, 2);
        return sum / (columns * height);
    }
    // As light leaves them.
    [[nodiscard]] std::vector<std::uint8_t> lit(E_ScreenColor_G56 screen) const {
        const Surface panel = opaque_picture(static_cast<int>(width), static_cast<int>(height));
        std::vector<std::uint8_t> out;
        for (const bool back : {false, true}) {
            for (unsigned i = 0; i < width * height; ++i) {
                unsigned char* pixel =
                    cairo_image_surface_get_data(panel.get()) + 4 * i; // rows without a gap
                for (unsigned c = 0; c < 3; ++c)
                    back ? out.push_back(pixel[2 - c]) : void(pixel[2 - c] = bytes[3 * i + c]);
            }
            cairo_surface_mark_dirty(panel.get());
            if (!back) light(panel.get(), screen);
        }
        return out;
    }

    unsigned width, height;
    std::vector<std::uint8_t> bytes;
};

using Rgb = std::array<unsigned, 3>;

TEST(Dithering, KeepsTheBrightnessInColoursOfTheScreen) {
    const Picture gray(256, 64, [](unsigned x, unsigned) { return Rgb{x, x, x}; });
    const Picture warm(256, 64, [](unsigned x, unsigned) { return Rgb{x, 255 - x, 128}; });
    for (const auto screen : {SCREEN_COLOR_SINGLE, SCREEN_COLOR_DOUBLE, SCREEN_COLOR_THREE})
        for (const Picture* shades : {&gray, &warm}) {
            if (screen != SCREEN_COLOR_THREE && shades == &warm) continue;
            Picture dots = *shades;
            dots.dither(screen);
            EXPECT_EQ(dots.bytes, dots.lit(screen)) << screen;
            for (unsigned channel = 0; channel < screen; ++channel)
                for (unsigned x = 0; x < 256; x += 32)
                    EXPECT_NEAR(dots.mean(channel, x, 32), shades->mean(channel, x, 32), 0.03)
                        << screen << ", channel " << channel << " from " << x;
        }
}

TEST(Dithering, KeepsWhatNeedsNone) {
    constexpr Rgb colors[] = {{0, 0, 0},   {255, 0, 0},   {0, 255, 0},   {255, 255, 0},
                              {0, 0, 255}, {255, 0, 255}, {0, 255, 255}, {255, 255, 255}};
    const Picture bars(64, 16, [&](unsigned x, unsigned) { return colors[x / 8]; });
    for (const auto screen : {SCREEN_COLOR_DOUBLE, SCREEN_COLOR_THREE}) {
        Picture dots = bars;
        dots.dither(screen);
        EXPECT_EQ(dots.bytes, bars.lit(screen)) << screen;
    }
    Picture shades(64, 16, [](unsigned x, unsigned y) { return Rgb{x, y, 4 * x}; });
    const std::vector<std::uint8_t> before = shades.bytes;
    shades.dither(SCREEN_COLOR_FULLCOLOR);
    EXPECT_EQ(shades.bytes, before);
}

} // namespace
} // namespace qm::sign
