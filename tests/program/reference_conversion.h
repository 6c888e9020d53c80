// The conversion to controller pixel data in its plainest form: whole-image bit planes, one bit at a time.
// Slow and simple, so that the real one can be compared with it.
#pragma once

#include "program/pixels/pixel_packing.h"

#include <vector>

namespace qm::reference {

// Arguments as convert_pixels; gives the bytes.
[[nodiscard]] std::vector<Ouint8> convert(const Ouint8* pixels, int left, int width, int height,
                                          const PixelLayout& layout);

} // namespace qm::reference
