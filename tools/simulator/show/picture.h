// Pictures of the screen in files.
#pragma once

#include "simulator/playback/Image.h"

#include <filesystem>

namespace qm::sim {

// The screen as a panel of round LEDs, scale pixels each way for every LED; below 4 as plain squares.
[[nodiscard]] Image led_panel(const Image& screen, int scale);

[[nodiscard]] std::vector<std::uint8_t> png_of(const Image& image);

// Writes a PNG in the place of what stands there, whole or not at all. Throws std::runtime_error with a
// sentence when it cannot.
void write_png(const Image& image, const std::filesystem::path& path);

} // namespace qm::sim
