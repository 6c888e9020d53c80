// Pictures as readers get them over the wire.
#pragma once

#include "simulator/playback/Image.h"
#include "simulator/playback/Rect.h"

#include <optional>
#include <string>

namespace qm::sim {

// Little endian: u8 kind (1, or 2 and then u16 controller), u16 width and height of the screen, u16 x, y,
// width and height of the part that is replaced, u8 depth. A depth of 1, 2, 4 or 8 is followed by u16 count
// and so many colours; then come rows of indices, from the high bits on, each from a new byte on. Depth 24
// has rows of colours. A colour is red, green and blue.
//
// The part is what differs from the picture before, or all of it without one. The same picture gives nothing.
[[nodiscard]] std::optional<std::string> picture_message(const Image* before, const Image& now,
                                                         std::optional<std::size_t> controller);

} // namespace qm::sim
