#include "reference_conversion.h"

namespace qm::reference {
namespace {

using Data = std::vector<Ouint8>;
using Plane = std::vector<bool>; // one bit for each pixel of the aligned canvas, set where the LED is dark

struct Picture {
    const Ouint8* pixels;
    int width, height;

    [[nodiscard]] const Ouint8* pixel(int x, int y) const {
        return pixels + 4 * (static_cast<std::size_t>(x) +
                             static_cast<std::size_t>(y) * static_cast<std::size_t>(width));
    }
};

// Whether a pixel lights the LED of each plane, the planes in the order in which they go out.
std::vector<bool> lit_leds(const Ouint8* pixel, const PixelLayout& layout) {
    const bool red = pixel[2] > 96, green = pixel[1] > 96, blue = pixel[0] > 96;
    if (layout.screenColor == 1) return {red || green || blue};
    if (layout.screenColor == 3) return {red, green, blue};
    const bool red_or_blue = red || (blue && !green);
    if ((layout.doubleColorPixel == 1) == (layout.tranMode == 0)) return {green, red_or_blue};
    return {red_or_blue, green};
}

std::vector<Plane> build_planes(const Picture& picture, int left, const PixelLayout& layout) {
    const int unit = static_cast<int>(layout.alignPixels);
    const int leftPad = left % unit;
    const int over = (left + picture.width) % unit;
    const int rowLen = leftPad + picture.width + (over == 0 ? 0 : unit - over);

    constexpr Ouint8 kDark[4] = {};
    std::vector<Plane> planes(lit_leds(kDark, layout).size());
    for (int y = 0; y < picture.height; ++y)
        for (int column = 0; column < rowLen; ++column) {
            const int x = column - leftPad;
            const auto lit = lit_leds(x >= 0 && x < picture.width ? picture.pixel(x, y) : kDark, layout);
            for (std::size_t i = 0; i < planes.size(); ++i) planes[i].push_back(!lit[i]);
        }
    return planes;
}

// Plane bits 8k to 8k + 7, the first one on top.
Ouint8 byte_of(const Plane& plane, std::size_t k) {
    unsigned byte = 0;
    for (std::size_t i = 0; i < 8; ++i)
        if (plane[8 * k + i]) byte |= 1U << (7 - i);
    return static_cast<Ouint8>(byte);
}

Data emit_interleaved(const std::vector<Plane>& planes, const PixelLayout& layout) {
    Data out;
    for (std::size_t k = 0; k < planes[0].size() / layout.alignPixels; ++k)
        for (const Plane& plane : planes) out.push_back(byte_of(plane, k));
    return out;
}

// Planes in words of 32 pixels, each with its lowest byte first; what is no whole word stays zero.
Data emit_plane_after_plane(const std::vector<Plane>& planes) {
    Data out;
    for (const Plane& plane : planes) {
        Data words;
        for (std::size_t k = 0; k < plane.size() / 32; ++k)
            for (std::size_t byte = 4; byte-- > 0;) words.push_back(byte_of(plane, 4 * k + byte));
        words.resize(plane.size() / 8);
        out.insert(out.end(), words.begin(), words.end());
    }
    return out;
}

unsigned gamma(Ouint8 value) {
    const double base = (value * 1.0 + 0.5) / 256.0;
    return static_cast<Ouint8>(256.0 * base * base - 0.5);
}

void append_16bit(const Ouint8* pixel, Data& out) {
    const unsigned red = gamma(pixel[2]), green = gamma(pixel[1]), blue = gamma(pixel[0]);
    const unsigned value = ((blue << 8) & 0xF800) + ((green << 3) & 0x07E0) + (red >> 3);
    out.push_back(static_cast<Ouint8>(value & 0xFF));
    out.push_back(static_cast<Ouint8>(value >> 8));
}

Data full_color(const Picture& picture, int mode) {
    Data out;
    for (int y = 0; y < picture.height; ++y) {
        for (int x = 0; x < picture.width; ++x) {
            const Ouint8* pixel = picture.pixel(x, y);
            if (mode == 5) out.insert(out.end(), {pixel[2], pixel[1], pixel[0]});
            if (mode == 3) append_16bit(pixel, out);
            if (mode == 1) out.insert(out.end(), {0, 0});
        }
    }
    return out;
}

} // namespace

Data convert(const Ouint8* pixels, int left, int width, int height, const PixelLayout& layout) {
    const Picture picture{pixels, width, height};
    if (layout.screenColor == 4) return full_color(picture, layout.tranMode);
    if (layout.screenColor < 1 || layout.screenColor > 3) return {};
    const std::vector<Plane> planes = build_planes(picture, left, layout);
    if (layout.tranMode == 0) return emit_interleaved(planes, layout);
    if (layout.tranMode == 4) return emit_plane_after_plane(planes);
    return {};
}

} // namespace qm::reference
