// A picture of the LED screen.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace qm::sim {

struct Rgb {
    std::uint8_t r = 0, g = 0, b = 0;
    bool operator==(const Rgb&) const = default;
};

// LEDs that are on or off.
[[nodiscard]] constexpr Rgb shine(bool red, bool green, bool blue) {
    const auto full = [](bool on) { return static_cast<std::uint8_t>(on ? 255 : 0); };
    return {full(red), full(green), full(blue)};
}

// Rows from the top, pixels from the left, three bytes (red, green, blue) a pixel.
struct Image {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgb;

    Image() = default;
    // Black.
    Image(int w, int h)
        : width(w), height(h), rgb(static_cast<std::size_t>(w) * static_cast<std::size_t>(h) * 3) {}

    [[nodiscard]] Rgb at(int x, int y) const {
        const std::size_t i = index(x, y);
        return {rgb[i], rgb[i + 1], rgb[i + 2]};
    }
    void set(int x, int y, Rgb color) {
        const std::size_t i = index(x, y);
        rgb[i] = color.r;
        rgb[i + 1] = color.g;
        rgb[i + 2] = color.b;
    }
    bool operator==(const Image&) const = default;

  private:
    [[nodiscard]] std::size_t index(int x, int y) const {
        return (static_cast<std::size_t>(y) * static_cast<std::size_t>(width) + static_cast<std::size_t>(x)) *
               3;
    }
};

} // namespace qm::sim
