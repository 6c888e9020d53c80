#include "reference_conversion.h"

namespace qm::reference {
namespace {

using Data = std::vector<Ouint8>;
using Plane = std::vector<bool>; // one bit for each pixel of the aligned canvas, set where the LED is dark

struct Planes {
    Plane red, green, blue;
};

struct Picture {
    const Ouint8* pixels;
    int width, height;

    [[nodiscard]] const Ouint8* pixel(int x, int y) const {
        return pixels + 4 * (static_cast<std::size_t>(x) +
                             static_cast<std::size_t>(y) * static_cast<std::size_t>(width));
    }
};

struct Colors {
    Ouint8 red = 0, green = 0, blue = 0;
};

struct Leds {
    bool red = false, green = false, blue = false;
};

bool lit(Ouint8 channel) { return channel > 96; }

Leds single_color(const Colors& c) {
    Leds leds;
    leds.red = lit(c.red);
    if (!leds.red) leds.red = lit(c.green);
    if (!leds.red) leds.red = lit(c.blue);
    return leds;
}

Leds double_color_1(const Colors& c) {
    Leds leds;
    leds.red = lit(c.red);
    leds.green = lit(c.green);
    if (!leds.red && !leds.green) leds.red = lit(c.blue);
    return leds;
}

Leds double_color_2(const Colors& c) {
    Leds leds;
    leds.green = lit(c.red);
    leds.red = lit(c.green);
    if (!leds.red && !leds.green) leds.green = lit(c.blue);
    return leds;
}

Leds leds_of(const Colors& c, const PixelLayout& layout) {
    if (layout.screenColor == 1) return single_color(c);
    if (layout.screenColor == 3) return {lit(c.red), lit(c.green), lit(c.blue)};
    return layout.doubleColorPixel == 1 ? double_color_1(c) : double_color_2(c);
}

Planes build_planes(const Picture& picture, int left, const PixelLayout& layout) {
    const int unit = static_cast<int>(layout.alignPixels);
    const int leftPad = left % unit;
    const int over = (left + picture.width) % unit;
    const int rightPad = over == 0 ? 0 : unit - over;
    const int rowLen = leftPad + picture.width + rightPad;

    Planes planes;
    for (int y = 0; y < picture.height; ++y) {
        for (int column = 0; column < rowLen; ++column) {
            Colors colors; // padding is dark
            if (column >= leftPad && column < leftPad + picture.width) {
                const Ouint8* pixel = picture.pixel(column - leftPad, y);
                colors = {pixel[2], pixel[1], pixel[0]};
            }
            const Leds leds = leds_of(colors, layout);
            planes.red.push_back(!leds.red);
            planes.green.push_back(!leds.green);
            planes.blue.push_back(!leds.blue);
        }
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

// Plane bits 32k to 32k + 31, the first one on top.
Ouint32 word_of(const Plane& plane, std::size_t k) {
    Ouint32 word = 0;
    for (std::size_t j = 0; j < 32; ++j)
        if (plane[32 * k + j]) word |= Ouint32{1} << (31 - j);
    return word;
}

Data emit_interleaved(const Planes& planes, const PixelLayout& layout) {
    Data out;
    for (std::size_t k = 0; k < planes.red.size() / layout.alignPixels; ++k) {
        if (layout.screenColor == 2) out.push_back(byte_of(planes.green, k));
        out.push_back(byte_of(planes.red, k));
        if (layout.screenColor != 3) continue;
        out.push_back(byte_of(planes.green, k));
        out.push_back(byte_of(planes.blue, k));
    }
    return out;
}

// A plane in words, each with its lowest byte first; what is no whole word stays zero.
void append_words(const Plane& plane, Data& out) {
    Data words;
    for (std::size_t k = 0; k < plane.size() / 32; ++k) {
        const Ouint32 word = word_of(plane, k);
        for (unsigned byte = 0; byte < 4; ++byte) words.push_back(static_cast<Ouint8>(word >> (8 * byte)));
    }
    words.resize(plane.size() / 8);
    out.insert(out.end(), words.begin(), words.end());
}

Data emit_plane_after_plane(const Planes& planes, const PixelLayout& layout) {
    Data out;
    append_words(planes.red, out);
    if (layout.screenColor >= 2) append_words(planes.green, out);
    if (layout.screenColor == 3) append_words(planes.blue, out);
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
    const Planes planes = build_planes(picture, left, layout);
    if (layout.tranMode == 0) return emit_interleaved(planes, layout);
    if (layout.tranMode == 4) return emit_plane_after_plane(planes, layout);
    return {};
}

} // namespace qm::reference
