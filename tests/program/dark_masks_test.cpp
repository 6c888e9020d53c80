#include "program/DarkMasks.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace qm {
namespace {

TEST(DarkMasks, AreTheSameOnEveryProcessor) {
    std::mt19937 random(3);
    std::array<Ouint8, 32> pixels{};
    for (int round = 0; round < 20000; ++round) {
        // Half of the channels next to the threshold.
        for (Ouint8& byte : pixels) byte = static_cast<Ouint8>(random() % 2 ? 95 + random() % 4 : random());
        ASSERT_EQ(dark_masks(pixels.data()), dark_masks_portable(pixels.data()));
    }
}

TEST(DarkMasks, PutThePixelsInOrderAndTheThresholdAt96) {
    std::array<Ouint8, 32> pixels{};
    pixels[0] = 97;          // blue of pixel 0
    pixels[4 * 3 + 1] = 255; // green of pixel 3
    pixels[4 * 7 + 2] = 128; // red of pixel 7
    pixels[4 * 5 + 2] = 96;  // still dark
    pixels[4 * 6 + 3] = 255; // not a colour
    for (const DarkMasks& masks : {dark_masks(pixels.data()), dark_masks_portable(pixels.data())})
        EXPECT_EQ(masks, (DarkMasks{0x7F, 0xF7, 0xFE}));
}

} // namespace
} // namespace qm
