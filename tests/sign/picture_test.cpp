// Where pictures lie in their rectangles.
#include "sign/PictureFit.h"

#include <gtest/gtest.h>

#include <array>

namespace qm::sign {
namespace {

TEST(PictureFit, ScalesAndPlaces) {
    constexpr Size panel{128, 32};
    using Box = std::array<std::int64_t, 4>;
    const struct {
        Size picture, area;
        Fit fit;
        Box placed, seen;
    } cases[] = {
        {{200, 100}, panel, Fit::none, {0, 0, 200, 100}, {0, 0, 128, 32}},
        {{3, 2}, panel, Fit::none, {0, 0, 3, 2}, {0, 0, 3, 2}},
        {{200, 100}, panel, Fit::contain, {32, 0, 64, 32}, {32, 0, 64, 32}},
        {{16, 16}, panel, Fit::contain, {48, 0, 32, 32}, {48, 0, 32, 32}},
        {{400, 50}, panel, Fit::contain, {0, 8, 128, 16}, {0, 8, 128, 16}},
        {{128, 32}, panel, Fit::contain, {0, 0, 128, 32}, {0, 0, 128, 32}},
        {{9000, 2}, panel, Fit::contain, {0, 15, 128, 1}, {0, 15, 128, 1}},
        {{3, 2}, {8, 4}, Fit::contain, {1, 0, 6, 4}, {1, 0, 6, 4}},
        {{200, 100}, panel, Fit::cover, {0, -16, 128, 64}, {0, 0, 128, 32}},
        {{400, 50}, panel, Fit::cover, {-64, 0, 256, 32}, {0, 0, 128, 32}},
        {{33, 32}, {32, 32}, Fit::cover, {0, 0, 33, 32}, {0, 0, 32, 32}},
        {{3, 2}, {8, 4}, Fit::cover, {0, 0, 8, 5}, {0, 0, 8, 4}},
        {{3, 2}, {8, 4}, Fit::stretch, {0, 0, 8, 4}, {0, 0, 8, 4}},
        {{64'000'000, 1}, {8, 4}, Fit::cover, {-127'999'996, 0, 256'000'000, 4}, {0, 0, 8, 4}},
    };
    const auto box = [](const Placement& p) { return Box{p.x, p.y, p.width, p.height}; };
    for (const auto& c : cases) {
        const Placement placed = place(c.picture, c.area, c.fit);
        EXPECT_EQ(box(placed), c.placed) << to_string(c.picture) << " in " << to_string(c.area);
        EXPECT_EQ(box(visible(placed, c.area)), c.seen) << to_string(c.picture);
    }
}

} // namespace
} // namespace qm::sign
