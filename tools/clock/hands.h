// The hands of an analog clock as pixels, the same on the simulated screen and in previews.
#pragma once

#include <cmath>
#include <numbers>

namespace qm::clock {

// How far each has turned from 12 o'clock on, 1 for once around.
struct Turns {
    double hour, minute, second;
};

[[nodiscard]] inline Turns turns_at(int hour, int minute, int second) {
    const double seconds = second / 60.0, minutes = (minute + seconds) / 60;
    return {(hour % 12 + minutes) / 12, minutes, seconds};
}

// Calls put(dx, dy) with every pixel of a hand, seen from the pivot: a bar from there on, at right angles
// exactly as wide and as long as it should be.
template <class Put> void draw_hand(int width, int length, double turn, Put&& put) {
    if (width == 0 || length == 0) return;
    constexpr double kExact = 1e-9;
    const double right = std::sin(turn * 2 * std::numbers::pi), up = std::cos(turn * 2 * std::numbers::pi);
    const int reach = length + width;
    for (int dy = -reach; dy <= reach; ++dy)
        for (int dx = -reach; dx <= reach; ++dx) {
            const double along = dx * right - dy * up, across = dx * up + dy * right;
            if (along > -0.5 + kExact && along < length - 0.5 + kExact && across >= -width / 2.0 - kExact &&
                across < width / 2.0 - kExact)
                put(dx, dy);
        }
}

} // namespace qm::clock
