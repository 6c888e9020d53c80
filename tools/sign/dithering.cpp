#include "dithering.h"

#include <algorithm>
#include <array>
#include <vector>

namespace qm::sign {
namespace {

// How bright the LEDs of a pixel shine, from 0 to 1, in red, green and blue.
using Light = std::array<float, 3>;

// Light adds up where it is linear, so values are taken there: with a gamma of 2, as the library takes them
// for full-colour pixels.
float linear(std::uint8_t value) {
    const float share = static_cast<float>(value) / 255.0F;
    return share * share;
}

// What LEDs of a screen are to shine for a pixel. A single colour shows the brightness; where blue is
// missing, red shines for it unless green does, as it does without dithering.
Light light_of(const std::uint8_t* pixel, E_ScreenColor_G56 screen) {
    const Light light{linear(pixel[0]), linear(pixel[1]), linear(pixel[2])};
    const auto [red, green, blue] = light;
    if (screen == SCREEN_COLOR_SINGLE) return {0.2126F * red + 0.7152F * green + 0.0722F * blue};
    if (screen == SCREEN_COLOR_DOUBLE) return {std::max(red, blue - green), green};
    return light;
}

// Error diffusion after Floyd and Steinberg, row by row to and fro, which leaves fewer patterns than always
// the same way.
class Diffusion {
  public:
    Diffusion(const RgbPixels& picture, E_ScreenColor_G56 screen)
        : m_picture(picture), m_screen(screen), m_here(picture.width + 2), m_below(picture.width + 2) {}

    void run() {
        for (std::size_t y = 0; y < m_picture.height; ++y) {
            for (std::size_t i = 0; i < m_picture.width; ++i)
                if (y % 2 == 0)
                    settle(i, y, 1);
                else
                    settle(m_picture.width - 1 - i, y, -1);
            m_here.swap(m_below);
            std::ranges::fill(m_below, Light{});
        }
    }

  private:
    // Each LED goes on or off, and what it shines too little or too much goes to those not yet settled.
    void settle(std::size_t x, std::size_t y, int ahead) {
        std::uint8_t* pixel = m_picture.first + y * m_picture.stride + 3 * x;
        const Light wanted = light_of(pixel, m_screen);
        const std::size_t at = x + 1, next = at + static_cast<std::size_t>(ahead),
                          last = at - static_cast<std::size_t>(ahead);
        for (std::size_t led = 0; led < wanted.size(); ++led) {
            const float value = wanted[led] + m_here[at][led];
            const bool lit = value > 0.5F;
            const float error = value - (lit ? 1.0F : 0.0F);
            pixel[led] = lit ? 255 : 0;
            m_here[next][led] += error * 7 / 16;
            m_below[last][led] += error * 3 / 16;
            m_below[at][led] += error * 5 / 16;
            m_below[next][led] += error / 16;
        }
    }

    const RgbPixels& m_picture;
    E_ScreenColor_G56 m_screen;
    std::vector<Light> m_here, m_below; // errors of a row and the next, with a pixel more on either side
};

} // namespace

void dither(const RgbPixels& picture, E_ScreenColor_G56 screen) {
    if (screen != SCREEN_COLOR_FULLCOLOR) Diffusion(picture, screen).run();
}

} // namespace qm::sign
