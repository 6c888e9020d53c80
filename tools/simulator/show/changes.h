// What differs between two pictures, and the colours of a part of one.
#pragma once

#include "simulator/playback/Image.h"
#include "simulator/playback/Rect.h"

#include <optional>

namespace qm::sim {

// The smallest rectangle that holds all pixels that differ between pictures of one size; nothing when none
// does.
[[nodiscard]] std::optional<Rect> changed_part(const Image& before, const Image& now);

constexpr std::size_t kMostIndexed = 256;

// A part of a picture by a table of its colours; rows from the top, an index a pixel.
struct IndexedPart {
    std::vector<Rgb> colors;
    std::vector<std::uint8_t> indices;
};

// Nothing for more colours than the most.
[[nodiscard]] std::optional<IndexedPart> indexed_part(const Image& image, const Rect& part);

} // namespace qm::sim
