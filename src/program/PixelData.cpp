#include "program/PixelData.h"

#include "program/DarkMasks.h"

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

namespace qm {
namespace {

constexpr GammaTable kGamma = gamma_table();

struct Canvas {
    const Ouint8* pixels;
    std::size_t width, height;
    std::size_t leftPad, rowLen; // in pixels; rowLen is a multiple of the alignment unit

    [[nodiscard]] std::size_t total() const { return rowLen * height; }
    [[nodiscard]] const Ouint8* row(std::size_t y) const { return pixels + 4 * width * y; }
};

std::size_t positive_mod(int value, unsigned unit) {
    const int remainder = value % static_cast<int>(unit);
    return static_cast<std::size_t>(remainder < 0 ? remainder + static_cast<int>(unit) : remainder);
}

Canvas aligned_canvas(const Ouint8* pixels, int left, int width, int height, unsigned unit) {
    const auto w = static_cast<std::size_t>(std::max(width, 0));
    const auto h = static_cast<std::size_t>(std::max(height, 0));
    const std::size_t leftPad = positive_mod(left, unit);
    const std::size_t rowLen = (leftPad + w + unit - 1) / unit * unit;
    return {pixels, w, h, leftPad, rowLen};
}

std::size_t plane_count(int screenColor) {
    const bool planes = screenColor >= 1 && screenColor <= 3;
    return planes ? static_cast<std::size_t>(screenColor) : 0;
}

constexpr std::array<Ouint8, 256> reversed_bits() {
    std::array<Ouint8, 256> table{};
    for (unsigned i = 0; i < 256; ++i)
        for (unsigned bit = 0; bit < 8; ++bit)
            if (i >> bit & 1U) table[i] = static_cast<Ouint8>(table[i] | 0x80U >> bit);
    return table;
}
constexpr std::array<Ouint8, 256> kReversed = reversed_bits();

// Eight pixels as one byte of each plane, the first pixel in the top bit. Dark is 1, as in the masks.
template <int Color, bool Swapped>
void pack_byte(const Ouint8* pixels, Ouint8* const* planes, std::size_t byte) {
    const DarkMasks dark = dark_masks(pixels);
    const auto put = [&](unsigned plane, unsigned mask) { planes[plane][byte] = kReversed[mask & 0xFFU]; };
    if constexpr (Color == SCREEN_COLOR_SINGLE) {
        put(0, dark.red & dark.green & dark.blue);
    } else if constexpr (Color == SCREEN_COLOR_THREE) {
        put(0, dark.red);
        put(1, dark.green);
        put(2, dark.blue);
    } else {
        // Blue shows on the plane that red goes to, where neither red nor green does.
        put(Swapped ? 1 : 0, dark.red & (dark.blue | ~dark.green));
        put(Swapped ? 0 : 1, dark.green);
    }
}

// Fills one row of each plane, rowLen / 8 bytes. Columns outside the image are dark.
template <int Color, bool Swapped> void pack_row(const Canvas& canvas, std::size_t y, Ouint8* const* planes) {
    const Ouint8* row = canvas.row(y);
    const std::size_t first = canvas.leftPad, last = canvas.leftPad + canvas.width;
    for (std::size_t byte = 0; byte < canvas.rowLen / 8; ++byte) {
        const std::size_t column = 8 * byte;
        if (column >= first && column + 8 <= last) {
            pack_byte<Color, Swapped>(row + 4 * (column - first), planes, byte);
            continue;
        }
        Ouint8 padded[32] = {};
        const std::size_t from = std::max(column, first), to = std::min(column + 8, last);
        if (from < to) std::memcpy(padded + 4 * (from - column), row + 4 * (from - first), 4 * (to - from));
        pack_byte<Color, Swapped>(padded, planes, byte);
    }
}

using RowPacker = void (*)(const Canvas&, std::size_t, Ouint8* const*);

RowPacker row_packer(const PixelLayout& layout) {
    switch (layout.screenColor) {
    case SCREEN_COLOR_SINGLE:
        return pack_row<SCREEN_COLOR_SINGLE, false>;
    case SCREEN_COLOR_DOUBLE:
        return layout.doubleColorPixel == static_cast<int>(DOUBLE_COLOR_PIXTYPE_1)
                   ? pack_row<SCREEN_COLOR_DOUBLE, false>
                   : pack_row<SCREEN_COLOR_DOUBLE, true>;
    default:
        return pack_row<SCREEN_COLOR_THREE, false>;
    }
}

// Bytes interleaved by plane: red, or green and red, or red, green and blue.
void emit_bytes(const Canvas& canvas, const PixelLayout& layout, Ouint8* out) {
    const std::size_t planes = plane_count(layout.screenColor);
    const std::size_t rowBytes = canvas.rowLen / 8;
    // As many groups as the alignment unit yields: fewer than were packed where it is not 8.
    std::size_t groups = canvas.total() / layout.alignPixels;
    const RowPacker pack = row_packer(layout);
    std::vector<Ouint8> scratch(planes * rowBytes);
    Ouint8* rows[3] = {};
    for (std::size_t p = 0; p < planes; ++p) rows[p] = scratch.data() + p * rowBytes;
    const Ouint8* order[3] = {rows[0], rows[1], rows[2]};
    if (planes == 2) std::swap(order[0], order[1]);
    for (std::size_t y = 0; y < canvas.height && groups > 0; ++y) {
        pack(canvas, y, rows);
        const std::size_t count = std::min(groups, rowBytes);
        for (std::size_t i = 0; i < count; ++i)
            for (std::size_t p = 0; p < planes; ++p) *out++ = order[p][i];
        groups -= count;
    }
}

// Whole planes, one after the other, every 32 pixels as a word with its lowest byte first.
void emit_words(const Canvas& canvas, const PixelLayout& layout, Ouint8* out) {
    const std::size_t planes = plane_count(layout.screenColor);
    const std::size_t rowBytes = canvas.rowLen / 8, planeBytes = canvas.total() / 8;
    const RowPacker pack = row_packer(layout);
    for (std::size_t y = 0; y < canvas.height; ++y) {
        Ouint8* rows[3] = {};
        for (std::size_t p = 0; p < planes; ++p) rows[p] = out + p * planeBytes + y * rowBytes;
        pack(canvas, y, rows);
    }
    for (std::size_t p = 0; p < planes; ++p) {
        Ouint8* plane = out + p * planeBytes;
        const std::size_t whole = planeBytes / 4 * 4;
        for (std::size_t i = 0; i < whole; i += 4) std::reverse(plane + i, plane + i + 4);
        std::fill(plane + whole, plane + planeBytes, Ouint8{0});
    }
}

void emit_24bit(const Ouint8* pixel, std::size_t count, Ouint8* out) {
    for (std::size_t i = 0; i < count; ++i, pixel += 4, out += 3) {
        out[0] = pixel[2];
        out[1] = pixel[1];
        out[2] = pixel[0];
    }
}

void emit_16bit(const Ouint8* pixel, std::size_t count, Ouint8* out) {
    for (std::size_t i = 0; i < count; ++i, pixel += 4, out += 2) {
        const Ouint16 value = pack_565(kGamma[pixel[2]], kGamma[pixel[1]], kGamma[pixel[0]]);
        out[0] = static_cast<Ouint8>(value);
        out[1] = static_cast<Ouint8>(value >> 8U);
    }
}

} // namespace

std::size_t pixel_data_size(int left, int width, int height, const PixelLayout& layout) {
    const Canvas canvas = aligned_canvas(nullptr, left, width, height, layout.alignPixels);
    if (layout.screenColor == static_cast<int>(SCREEN_COLOR_FULLCOLOR)) {
        const std::size_t pixels = canvas.width * canvas.height;
        switch (layout.tranMode) {
        case Tran_Pixel_Mode1:
        case Tran_Pixel_Mode3:
            return 2 * pixels;
        case Tran_Pixel_Mode5:
            return 3 * pixels;
        default:
            return 0;
        }
    }
    const std::size_t planes = plane_count(layout.screenColor);
    switch (layout.tranMode) {
    case Tran_Pixel_Mode0:
        return planes * (canvas.total() / layout.alignPixels);
    case Tran_Pixel_Mode4:
        return planes * (canvas.total() / 8);
    default:
        return 0;
    }
}

std::size_t convert_pixels(const Ouint8* pixels, int left, int width, int height, const PixelLayout& layout,
                           Ouint8* out) {
    const std::size_t size = pixel_data_size(left, width, height, layout);
    if (size == 0) return 0;
    const Canvas canvas = aligned_canvas(pixels, left, width, height, layout.alignPixels);
    const std::size_t count = canvas.width * canvas.height;
    switch (layout.tranMode) {
    case Tran_Pixel_Mode0:
        emit_bytes(canvas, layout, out);
        break;
    case Tran_Pixel_Mode1:
        std::memset(out, 0, size);
        break;
    case Tran_Pixel_Mode3:
        emit_16bit(pixels, count, out);
        break;
    case Tran_Pixel_Mode4:
        emit_words(canvas, layout, out);
        break;
    case Tran_Pixel_Mode5:
        emit_24bit(pixels, count, out);
        break;
    default:
        break;
    }
    return size;
}

} // namespace qm
