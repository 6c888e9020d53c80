// What a controller will play, filmed at a simulated one.
#pragma once

#include "qm_sdk_dual.hpp"

#include <chrono>
#include <string>
#include <vector>

namespace qm::film {

struct Scene {
    Screen screen;
    std::vector<File> files; // of programs
    std::vector<Area> areas; // over them
};

constexpr std::chrono::minutes kLongest{10};
constexpr unsigned kLargestScale = 16;

// An animated GIF of so long from the moment when all of it has arrived, at that local time; an LED is scale
// pixels each way. Throws std::runtime_error when a program cannot be played, or the scene is too large.
[[nodiscard]] std::string gif_of(const Scene& scene, std::chrono::seconds length,
                                 std::chrono::local_seconds begin, unsigned scale);

} // namespace qm::film
