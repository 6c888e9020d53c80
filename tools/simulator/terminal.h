// The screen as text for a terminal.
#pragma once

#include "simulator/Image.h"

#include <string>

namespace qm::sim {

// Two rows of pixels a line, in upper half blocks with 24-bit colours. What is wider than the terminal is
// cut at its edge rather than wrapped.
[[nodiscard]] std::string half_blocks(const Image& screen);
// The same over the screen of that size that stands above the cursor.
[[nodiscard]] std::string half_blocks_over(const Image& screen);

} // namespace qm::sim
