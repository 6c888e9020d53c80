// Reads pixels out of the controllers' pixel data.
#pragma once

#include "simulator/playback/Image.h"
#include "simulator/playback/Rect.h"
#include "simulator/protocol/PixelFormat.h"
#include "support/bytes.h"

namespace qm::sim {

// Whether a screen of this colour can be driven in this mode; no pixel data exists for the others.
[[nodiscard]] bool goes_together(PixelFormat format);

// How many pixels of a row stand or fall together in the data.
[[nodiscard]] std::size_t group_of(PixelFormat format);

// The bytes that one page of the rectangle takes, 0 for none and where colour and mode do not go together.
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
