#include "program/PixelData.h"

#include "program/FullColour.h"
#include "program/LitPixels.h"

#include <algorithm>
#include <array>
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
    return {pixels, w, h, leftPad, rowLen};
}

std::size_t plane_count(int screenColor) {
    const bool planes = screenColor >= 1 && screenColor <= 3;
    return planes ? static_cast<std::size_t>(screenColor) : 0;
}

// Eight columns of one row make a byte of each plane, and a word of LitPixels.
class Rows {
  public:
    explicit Rows(const Canvas& canvas)
        : m_canvas(canvas), m_firstWhole((canvas.leftPad + 7) / 8),
          m_lastWhole(std::max(m_firstWhole, (canvas.leftPad + canvas.width) / 8)) {}

    // Hands the words of all rows on in pieces, with the position of each piece.
    template <class Take> void for_each_piece(const Take& take) const {
        std::array<Ouint32, 512> lit;
        const std::size_t rowWords = m_canvas.rowLen / 8;
        for (std::size_t y = 0; y < m_canvas.height; ++y)
            for (std::size_t from = 0, to; from < rowWords; from = to) {
                to = std::min(rowWords, from + lit.size());
                fill(y, from, to, lit.data());
                take(y * rowWords + from, std::span<const Ouint32>(lit.data(), to - from));
            }
    }

  private:
    void fill(std::size_t y, std::size_t from, std::size_t to, Ouint32* lit) const {
        const std::size_t whole = std::clamp(m_firstWhole, from, to),
                          edge = std::clamp(m_lastWhole, whole, to);
        for (std::size_t word = from; word < whole; ++word) lit[word - from] = padded_word(y, word);
        if (whole < edge)
            m_kernel(m_canvas.row(y) + 4 * (8 * whole - m_canvas.leftPad), edge - whole,
                     lit + (whole - from));
        for (std::size_t word = edge; word < to; ++word) lit[word - from] = padded_word(y, word);
    }

    // Columns outside the image are dark.
    [[nodiscard]] Ouint32 padded_word(std::size_t y, std::size_t word) const {
        const std::size_t first = m_canvas.leftPad, last = first + m_canvas.width;
        const std::size_t from = std::max(8 * word, first), to = std::min(8 * word + 8, last);
        if (from >= to) return 0;
        Ouint8 padded[32] = {};
        std::memcpy(padded + 4 * (from - 8 * word), m_canvas.row(y) + 4 * (from - first), 4 * (to - from));
        Ouint32 lit;
        m_kernel(padded, 1, &lit);
        return lit;
    }

    const Canvas& m_canvas;
    LitPixels m_kernel = lit_pixels();
    std::size_t m_firstWhole, m_lastWhole; // words with no column outside the image
};

// What a word of LitPixels gives to each plane, in its low byte; 1 is dark.
struct SingleColour {
    static constexpr std::size_t planes = 1;
    static std::array<Ouint32, 1> dark(Ouint32 lit) { return {~(lit | lit >> 8U | lit >> 16U)}; }
};

struct ThreeColours {
    static constexpr std::size_t planes = 3;
    static std::array<Ouint32, 3> dark(Ouint32 lit) { return {~(lit >> 16U), ~(lit >> 8U), ~lit}; }
};

template <bool Swapped> struct DoubleColour {
    static constexpr std::size_t planes = 2;
    static std::array<Ouint32, 2> dark(Ouint32 lit) {
        // Blue shows on the plane that red goes to, where neither red nor green does.
        const Ouint32 green = lit >> 8U, red = lit >> 16U | (lit & ~green);
        if constexpr (Swapped) return {~green, ~red};
        return {~red, ~green};
    }
};

// Bytes interleaved by plane: red, or green and red, or red, green and blue.
template <class Colour> void emit_bytes(const Canvas& canvas, const PixelLayout& layout, Ouint8* out) {
    // As many groups as the alignment unit yields: fewer than there are where it is not 8.
    const std::size_t groups = canvas.total() / layout.alignPixels;
    Rows(canvas).for_each_piece([=](std::size_t at, std::span<const Ouint32> lit) {
        const std::size_t count = at < groups ? std::min(groups - at, lit.size()) : 0;
        Ouint8* bytes = out + Colour::planes * at;
        for (std::size_t i = 0; i < count; ++i) {
            const auto dark = Colour::dark(lit[i]);
            for (std::size_t p = 0; p < Colour::planes; ++p)
                bytes[Colour::planes * i + p] = static_cast<Ouint8>(dark[Colour::planes == 2 ? 1 - p : p]);
        }
    });
}

void swap_word_bytes(Ouint8* plane, std::size_t words) {
    for (std::size_t i = 0; i < words; ++i, plane += 4) {
        Ouint32 word;
        std::memcpy(&word, plane, sizeof word);
        word = word << 24U | (word << 8U & 0xFF0000U) | (word >> 8U & 0xFF00U) | word >> 24U;
        std::memcpy(plane, &word, sizeof word);
    }
}

// Whole planes, one after the other, every 32 pixels as a word with its lowest byte first.
template <class Colour> void emit_words(const Canvas& canvas, Ouint8* out) {
    const std::size_t planeBytes = canvas.total() / 8, words = planeBytes / 4;
    Rows(canvas).for_each_piece([=](std::size_t at, std::span<const Ouint32> lit) {
        for (std::size_t p = 0; p < Colour::planes; ++p) {
            Ouint8* plane = out + p * planeBytes + at;
            for (std::size_t i = 0; i < lit.size(); ++i)
                plane[i] = static_cast<Ouint8>(Colour::dark(lit[i])[p]);
        }
    });
    for (std::size_t p = 0; p < Colour::planes; ++p) {
        Ouint8* plane = out + p * planeBytes;
        swap_word_bytes(plane, words);
        std::fill(plane + 4 * words, plane + planeBytes, Ouint8{0});
    }
}

template <class Colour> void emit_planes(const Canvas& canvas, const PixelLayout& layout, Ouint8* out) {
    if (layout.tranMode == Tran_Pixel_Mode0)
        emit_bytes<Colour>(canvas, layout, out);
    else
        emit_words<Colour>(canvas, out);
}

void emit_planes(const Canvas& canvas, const PixelLayout& layout, Ouint8* out) {
    switch (layout.screenColor) {
    case SCREEN_COLOR_SINGLE:
        return emit_planes<SingleColour>(canvas, layout, out);
    case SCREEN_COLOR_DOUBLE:
        return layout.doubleColorPixel == static_cast<int>(DOUBLE_COLOR_PIXTYPE_1)
                   ? emit_planes<DoubleColour<false>>(canvas, layout, out)
                   : emit_planes<DoubleColour<true>>(canvas, layout, out);
    default:
        return emit_planes<ThreeColours>(canvas, layout, out);
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
    case Tran_Pixel_Mode4:
        emit_planes(canvas, layout, out);
        break;
    case Tran_Pixel_Mode1:
        std::memset(out, 0, size);
        break;
    case Tran_Pixel_Mode3:
        full_colour_kernels().to_16bit(pixels, count, out);
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
