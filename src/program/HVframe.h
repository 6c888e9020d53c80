// The pattern picture of a border.
#pragma once

#include "program/pixels/Surface.h"
#include "support/bytes.h"

#include <optional>
#include <string>

namespace qm {

struct HVframe {
    int frameWidth = 0, frameHeight = 0; // of the pattern; its height is the thickness of an area border
    CData pixels;                        // converted for the screen settings of the moment it was loaded

    // Loads the picture; nothing, after printing "Error:Can't find frame png.", when it cannot be read.
    static std::optional<HVframe> load(const std::string& picPath);
};

// Reads a PNG file; null when it cannot be read, is no ordinary file, or has more than 64 million pixels.
// Throws only when memory is exhausted.
SurfacePtr load_picture(const std::string& picPath);

} // namespace qm
