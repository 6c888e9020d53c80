// How a picture fills its rectangle.
#pragma once

#include "values.h"

namespace qm::sign {

// In its own size from the top left corner; wholly inside, in the middle of black; over all of the rectangle,
// cut around the middle; or over all of it, whatever becomes of its proportions.
enum class Fit : unsigned { none, contain, cover, stretch };
inline constexpr Name kFits[] = {{"none", 0}, {"contain", 1}, {"cover", 2}, {"stretch", 3}};

[[nodiscard]] Fit read_fit(const std::string& text);

struct PictureFit {
    Fit fit = Fit::none;
    bool dither = false; // into the colours of the screen
};

// Where a scaled picture lies, seen from the top left corner of the rectangle; it may reach beyond that.
struct Placement {
    std::int64_t x = 0, y = 0, width = 0, height = 0;
};
[[nodiscard]] Placement place(const Size& picture, const Size& area, Fit fit);

// The part of it inside the rectangle.
[[nodiscard]] Placement visible(const Placement& placement, const Size& area);

} // namespace qm::sign
