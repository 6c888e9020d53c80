#include "PictureFit.h"

#include <algorithm>

namespace qm::sign {
namespace {

// a * b / c, rounded, and never nothing.
std::int64_t scaled(std::int64_t a, std::int64_t b, std::int64_t c) {
    return std::max<std::int64_t>(1, (a * b + c / 2) / c);
}

} // namespace

Fit read_fit(const std::string& text) { return static_cast<Fit>(read_word(text, kFits)); }

Placement place(const Size& picture, const Size& area, Fit fit) {
    const std::int64_t w = picture.width, h = picture.height, width = area.width, height = area.height;
    if (fit == Fit::none) return {0, 0, w, h};
    if (fit == Fit::stretch) return {0, 0, width, height};
    const bool flatter = w * height > h * width; // than the rectangle
    Placement placed{0, 0, width, height};
    if (flatter == (fit == Fit::contain))
        placed.height = scaled(h, width, w);
    else
        placed.width = scaled(w, height, h);
    placed.x = (width - placed.width) / 2;
    placed.y = (height - placed.height) / 2;
    return placed;
}

Placement visible(const Placement& placement, const Size& area) {
    const std::int64_t left = std::max<std::int64_t>(placement.x, 0),
                       top = std::max<std::int64_t>(placement.y, 0),
                       right = std::min<std::int64_t>(placement.x + placement.width, area.width),
                       bottom = std::min<std::int64_t>(placement.y + placement.height, area.height);
    return {left, top, right - left, bottom - top};
}

} // namespace qm::sign
