#include "program/pixels/pixel_packing.h"

#include "program/pixels/FullColour.h"
#include "program/pixels/LitPixels.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <span>

namespace qm {
namespace {

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
    if (rowLen == w) return {pixels, w * h, 1, 0, w * h}; // without padding the rows are one
    return {pixels, w, h, leftPad, rowLen};
}

std::size_t plane_count(int screenColor) {
    const bool planes = screenColor >= 1 && screenColor <= 3;
    return planes ? static_cast<std::size_t>(screenColor) : 0;
}

// Pixels are taken in pieces of a row, eight columns a byte of each plane.
constexpr std::size_t kPiece = 512;

class Rows {
  public:
    explicit Rows(const Canvas& canvas)
        : m_canvas(canvas), m_firstWhole((canvas.leftPad + 7) / 8),
          m_lastWhole(std::max(m_firstWhole, (canvas.leftPad + canvas.width) / 8)) {}

    // Hands on each piece: its position in a plane, and the dark bits of its bytes.
    template <class Use> void for_each_piece(const Use& use) const {
        std::array<DarkBits, kPiece> dark;
        const std::size_t rowBytes = m_canvas.rowLen / 8;
        for (std::size_t y = 0; y < m_canvas.height; ++y)
            for (std::size_t from = 0, to; from < rowBytes; from = to) {
                to = std::min(rowBytes, from + kPiece);
                find_dark(y, from, to, dark.data());
                use(y * rowBytes + from, std::span<const DarkBits>(dark.data(), to - from));
            }
    }

  private:
    void find_dark(std::size_t y, std::size_t from, std::size_t to, DarkBits* dark) const {
        const std::size_t whole = std::clamp(m_firstWhole, from, to),
                          edge = std::clamp(m_lastWhole, whole, to);
        for (std::size_t byte = from; byte < whole; ++byte) dark[byte - from] = edge_bits(y, byte);
        if (whole < edge)
            m_kernels.find_dark(m_canvas.row(y) + 4 * (8 * whole - m_canvas.leftPad), edge - whole,
                                dark + (whole - from));
        for (std::size_t byte = edge; byte < to; ++byte) dark[byte - from] = edge_bits(y, byte);
    }

    // Columns outside the image are dark.
    [[nodiscard]] DarkBits edge_bits(std::size_t y, std::size_t byte) const {
        const std::size_t first = m_canvas.leftPad, last = first + m_canvas.width;
        const std::size_t from = std::max(8 * byte, first), to = std::min(8 * byte + 8, last);
        Ouint8 padded[32] = {};
        if (from < to)
            std::memcpy(padded + 4 * (from - 8 * byte), m_canvas.row(y) + 4 * (from - first),
                        4 * (to - from));
        DarkBits dark;
        m_kernels.find_dark(padded, 1, &dark);
        return dark;
    }

    const Canvas& m_canvas;
    const LitPixelKernels& m_kernels = lit_pixel_kernels();
    std::size_t m_firstWhole, m_lastWhole; // bytes with no column outside the image
};

// The bytes of a piece for each plane of a screen, red, green and blue.
class PlaneBytes {
  public:
    explicit PlaneBytes(const PixelLayout& layout)
        : m_color(layout.screenColor),
          m_swapped(layout.screenColor == static_cast<int>(SCREEN_COLOR_DOUBLE) &&
                    layout.doubleColorPixel != static_cast<int>(DOUBLE_COLOR_PIXTYPE_1)) {}

    void set(std::span<const DarkBits> dark, ByteOrder order) {
        lit_pixel_kernels().split(dark.data(), dark.size(), order,
                                  {m_red.data(), m_green.data(), m_blue.data()});
        const std::size_t count = dark.size();
        if (m_color == SCREEN_COLOR_SINGLE)
            for (std::size_t i = 0; i < count; ++i) m_red[i] &= static_cast<Ouint8>(m_green[i] & m_blue[i]);
        // Blue shows on the plane that red goes to, where neither red nor green does.
        if (m_color == SCREEN_COLOR_DOUBLE)
            for (std::size_t i = 0; i < count; ++i) m_red[i] &= static_cast<Ouint8>(m_blue[i] | ~m_green[i]);
    }

    [[nodiscard]] const Ouint8* red() const { return m_swapped ? m_green.data() : m_red.data(); }
    [[nodiscard]] const Ouint8* green() const { return m_swapped ? m_red.data() : m_green.data(); }
    [[nodiscard]] const Ouint8* plane(std::size_t number) const {
        return number == 0 ? red() : number == 1 ? green() : m_blue.data();
    }

  private:
    int m_color;
    bool m_swapped;
    std::array<Ouint8, kPiece> m_red{}, m_green{}, m_blue{};
};

// Bytes interleaved by plane: red, or green and red, or red, green and blue.
void emit_bytes(const Canvas& canvas, const PixelLayout& layout, Ouint8* out) {
    const std::size_t planes = plane_count(layout.screenColor);
    // A group of 8 pixels is written for each alignment unit, so that the last ones are missing where a unit
    // is longer.
    const std::size_t groups = canvas.total() / layout.alignPixels;
    PlaneBytes bytes(layout);
    Rows(canvas).for_each_piece([&](std::size_t at, std::span<const DarkBits> dark) {
        const std::size_t count = at < groups ? std::min(groups - at, dark.size()) : 0;
        Ouint8* piece = out + planes * at;
        if (planes == 3) { // the bytes of dark bits are those of pixels
            static_assert(std::endian::native == std::endian::little);
            full_colour_kernels().to_24bit(reinterpret_cast<const Ouint8*>(dark.data()), count, piece);
            return;
        }
        bytes.set(dark, ByteOrder::straight);
        const Ouint8 *red = bytes.red(), *green = bytes.green();
        if (planes == 1)
            std::copy_n(red, count, piece);
        else
            for (std::size_t i = 0; i < count; ++i) {
                piece[2 * i] = green[i];
                piece[2 * i + 1] = red[i];
            }
    });
}

// Whole planes, one after the other, every 32 pixels as a word with its lowest byte first.
void emit_words(const Canvas& canvas, const PixelLayout& layout, Ouint8* out) {
    const std::size_t planes = plane_count(layout.screenColor);
    const std::size_t planeBytes = canvas.total() / 8, wordBytes = planeBytes / 4 * 4;
    const bool wholeRows = canvas.rowLen % 32 == 0; // else words reach over the ends of rows
    PlaneBytes bytes(layout);
    Rows(canvas).for_each_piece([&](std::size_t at, std::span<const DarkBits> dark) {
        bytes.set(dark, wholeRows ? ByteOrder::fours_reversed : ByteOrder::straight);
        for (std::size_t p = 0; p < planes; ++p) {
            const Ouint8* piece = bytes.plane(p);
            Ouint8* plane = out + p * planeBytes;
            if (wholeRows)
                std::copy_n(piece, dark.size(), plane + at);
            else
                for (std::size_t i = 0; i < dark.size(); ++i)
                    if (at + i < wordBytes) plane[(at + i) ^ 3U] = piece[i];
        }
    });
    for (std::size_t p = 0; p < planes; ++p)
        std::fill(out + p * planeBytes + wordBytes, out + (p + 1) * planeBytes, Ouint8{0});
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
        full_colour_kernels().to_16bit(pixels, count, out);
        break;
    case Tran_Pixel_Mode4:
        emit_words(canvas, layout, out);
        break;
    case Tran_Pixel_Mode5:
        full_colour_kernels().to_24bit(pixels, count, out);
        break;
    default:
        break;
    }
    return size;
}

} // namespace qm
