#include "simulator/playback/PixelReader.h"

namespace qm::sim {
namespace {

bool is_planar(TransferMode mode) { return mode == TransferMode::planes8 || mode == TransferMode::planes32; }

std::size_t bytes_a_pixel(TransferMode mode) { return mode == TransferMode::rgb888 ? 3 : 2; }

std::size_t pad_before(PixelFormat format, const Rect& rect) {
    return static_cast<std::size_t>(rect.x) % group_of(format);
}

std::size_t row_length(PixelFormat format, const Rect& rect) {
    const std::size_t group = group_of(format);
    const std::size_t used = pad_before(format, rect) + static_cast<std::size_t>(rect.width);
    return (used + group - 1) / group * group;
}

} // namespace

std::size_t group_of(PixelFormat format) {
    if (!is_planar(format.mode)) return 1;
    return format.mode == TransferMode::planes32 ? 32 : 8;
}

bool goes_together(PixelFormat format) {
    return is_planar(format.mode) == (format.color != ScreenColor::full);
}

std::size_t pixel_data_length(PixelFormat format, const Rect& rect) {
    if (!goes_together(format) || rect.width <= 0 || rect.height <= 0) return 0;
    const std::size_t pixels = row_length(format, rect) * static_cast<std::size_t>(rect.height);
    if (!is_planar(format.mode)) return pixels * bytes_a_pixel(format.mode);
    return pixels / 8 * static_cast<std::size_t>(format.color);
}

PixelReader::PixelReader(PixelFormat format, const Rect& rect, Bytes data)
    : m_format(format), m_data(data), m_row(row_length(format, rect)), m_pad(pad_before(format, rect)),
      m_planes(static_cast<std::size_t>(format.color)),
      m_plane_bytes(m_row * static_cast<std::size_t>(rect.height) / 8) {}

Rgb PixelReader::at(int x, int y) const {
    const std::size_t pixel = static_cast<std::size_t>(y) * m_row + m_pad + static_cast<std::size_t>(x);
    if (is_planar(m_format.mode)) return planar(pixel);
    return m_format.mode == TransferMode::rgb565 ? rgb565(pixel) : rgb888(pixel);
}

// Within a byte the leftmost pixel is the most significant bit. In words of 32 pixels the bytes stand in
// reverse: pixels 24 to 31 first, pixels 0 to 7 last.
bool PixelReader::lit(std::size_t pixel, std::size_t plane) const {
    std::size_t byte = pixel / 8;
    if (m_format.mode == TransferMode::planes8)
        byte = byte * m_planes + plane;
    else
        byte = (byte ^ 3U) + plane * m_plane_bytes;
    return byte < m_data.size() && (m_data[byte] >> (7 - pixel % 8) & 1U) == 0;
}

// Of two colours green comes first where the planes take turns, red where they follow one another.
Rgb PixelReader::planar(std::size_t pixel) const {
    if (m_format.color == ScreenColor::full) return {};
    bool on[3]{};
    for (std::size_t plane = 0; plane < m_planes; ++plane) on[plane] = lit(pixel, plane);
    if (m_format.color == ScreenColor::dual && m_format.mode == TransferMode::planes8)
        std::swap(on[0], on[1]);
    return shine(on[0], on[1], on[2]);
}

Rgb PixelReader::rgb565(std::size_t pixel) const {
    if (m_data.size() < pixel * 2 + 2) return {};
    const unsigned value = m_data[pixel * 2] | static_cast<unsigned>(m_data[pixel * 2 + 1]) << 8U;
    const auto five = [](unsigned v) { return static_cast<std::uint8_t>((v & 31U) << 3U | (v & 31U) >> 2U); };
    const unsigned green = value >> 5U & 63U;
    return {five(value), static_cast<std::uint8_t>(green << 2U | green >> 4U), five(value >> 11U)};
}

Rgb PixelReader::rgb888(std::size_t pixel) const {
    if (m_data.size() < pixel * 3 + 3) return {};
    return {m_data[pixel * 3], m_data[pixel * 3 + 1], m_data[pixel * 3 + 2]};
}

} // namespace qm::sim
