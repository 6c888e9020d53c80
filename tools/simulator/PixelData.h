// Reads pixels out of the controllers' pixel data.
#pragma once

#include "simulator/Image.h"
#include "simulator/Rect.h"
#include "simulator/ScreenColor.h"
#include "support/bytes.h"

namespace qm::sim {

// Numbered as the controllers number them.
enum class TransferMode {
    planes8 = 0,  // a byte of each plane for every 8 pixels, plane by plane in turn
    rgb565 = 3,   // 16 bits a pixel: blue in the top five, green, red in the low five
    planes32 = 4, // 32-bit words of 32 pixels, one whole plane after the other
    rgb888 = 5,   // three bytes a pixel
};

struct PixelFormat {
    TransferMode mode = TransferMode::planes8;
    ScreenColor color = ScreenColor::single;
};

// Whether a screen of this colour can be driven in this mode; no pixel data exists for the others.
[[nodiscard]] bool goes_together(PixelFormat format);

// The bytes that one page of the rectangle takes, 0 where colour and mode do not go together.
[[nodiscard]] std::size_t pixel_data_length(PixelFormat format, const Rect& rect);

// The pixels of one page. Planes lie at the same bits as on the screen: every row is filled up with dark
// pixels to whole groups on the left and on the right. A bit of 0 is a lit LED.
class PixelReader {
  public:
    PixelReader(PixelFormat format, const Rect& rect, Bytes data);

    // Pixel (x, y) of the rectangle as its LEDs shine; black when the data does not reach so far.
    [[nodiscard]] Rgb at(int x, int y) const;

  private:
    [[nodiscard]] bool lit(std::size_t pixel, std::size_t plane) const;
    [[nodiscard]] Rgb planar(std::size_t pixel) const;
    [[nodiscard]] Rgb rgb565(std::size_t pixel) const;
    [[nodiscard]] Rgb rgb888(std::size_t pixel) const;

    PixelFormat m_format;
    Bytes m_data;
    std::size_t m_row; // pixels of a row, padding included
    std::size_t m_pad; // dark pixels before the first of a row
    std::size_t m_planes;
    std::size_t m_plane_bytes;
};

} // namespace qm::sim
