// A rectangle in pixels of the screen; it may reach outside.
#pragma once

namespace qm::sim {

struct Rect {
    int x = 0, y = 0, width = 0, height = 0;
    bool operator==(const Rect&) const = default;
};

} // namespace qm::sim
