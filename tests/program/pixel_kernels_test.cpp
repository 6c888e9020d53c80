// Each kernel beside the plain form, on its own: a program runs one of them only.
#include "program/pixels/FullColour.h"
#include "program/pixels/LitPixels.h"
#include "program/pixels/pixel_packing.h"
#include "support/processor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <vector>

namespace qm {
namespace {

// Pixels at any alignment, in memory that ends with them. Half of the channels are next to a threshold.
class Pixels {
  public:
    Pixels(std::size_t count, std::mt19937& random)
        : m_offset(random() % 33), m_memory(std::make_unique<Ouint8[]>(m_offset + 4 * count)) {
        std::generate_n(m_memory.get(), m_offset + 4 * count, [&random] {
            const auto value = random();
            return static_cast<Ouint8>(value & 0x100U ? 95 + value % 4 : value);
        });
    }
    [[nodiscard]] const Ouint8* data() const { return m_memory.get() + m_offset; }
    [[nodiscard]] unsigned channel(std::size_t pixel, std::size_t n) const { return data()[4 * pixel + n]; }

  private:
    std::size_t m_offset;
    std::unique_ptr<Ouint8[]> m_memory;
};

void compare_split(const LitPixelKernels& kernels, const Ouint32* dark, std::size_t count, ByteOrder order) {
    const auto red = std::make_unique<Ouint8[]>(count), green = std::make_unique<Ouint8[]>(count),
               blue = std::make_unique<Ouint8[]>(count);
    kernels.split(dark, count, order, {red.get(), green.get(), blue.get()});
    for (std::size_t n = 0; n < count; ++n) {
        const std::size_t to = order == ByteOrder::straight ? n : n / 4 * 4 + (3 - n % 4);
        ASSERT_EQ(dark[n] & 0xFFFFFFU, blue[to] | green[to] << 8 | red[to] << 16) << n << " of " << count;
    }
}

void compare_lit_pixels(const LitPixelKernels& kernels) {
    std::mt19937 random(8);
    for (std::size_t count = 0; count < 40; ++count)
        for (int round = 0; round < 50; ++round) {
            const Pixels pixels(8 * count, random);
            const auto dark = std::make_unique<Ouint32[]>(count);
            kernels.find_dark(pixels.data(), count, dark.get());
            for (std::size_t pixel = 0; pixel < 8 * count; ++pixel)
                for (std::size_t channel = 0; channel < 3; ++channel)
                    ASSERT_EQ(dark[pixel / 8] >> (8 * channel + 7 - pixel % 8) & 1U,
                              pixels.channel(pixel, channel) <= 96)
                        << "pixel " << pixel << " of " << 8 * count << ", channel " << channel;
            compare_split(kernels, dark.get(), count, ByteOrder::straight);
            compare_split(kernels, dark.get(), count / 4 * 4, ByteOrder::fours_reversed);
        }
}

void compare_full_colour(const FullColourKernels& kernels) {
    constexpr GammaTable kGamma = gamma_table();
    std::mt19937 random(16);
    for (std::size_t count = 0; count < 200; ++count)
        for (int round = 0; round < 10; ++round) {
            const Pixels pixels(count, random);
            const auto out24 = std::make_unique<Ouint8[]>(3 * count),
                       out16 = std::make_unique<Ouint8[]>(2 * count);
            kernels.to_24bit(pixels.data(), count, out24.get());
            kernels.to_16bit(pixels.data(), count, out16.get());
            for (std::size_t pixel = 0; pixel < count; ++pixel) {
                SCOPED_TRACE(testing::Message() << "pixel " << pixel << " of " << count);
                const unsigned blue = pixels.channel(pixel, 0), green = pixels.channel(pixel, 1),
                               red = pixels.channel(pixel, 2);
                const Ouint8* rgb = &out24[3 * pixel];
                ASSERT_EQ((std::vector<unsigned>{rgb[0], rgb[1], rgb[2]}), (std::vector{red, green, blue}));
                ASSERT_EQ(out16[2 * pixel] | out16[2 * pixel + 1] << 8,
                          pack_565(kGamma[red], kGamma[green], kGamma[blue]));
            }
        }
}

TEST(PixelKernels, LightTheSamePixelsOnEveryProcessor) {
    compare_lit_pixels(kPortableLitPixels);
    if (has_avx2()) compare_lit_pixels(kAvx2LitPixels);
}

TEST(PixelKernels, GiveFullColourTheSameGradesOnEveryProcessor) {
    compare_full_colour(kPortableFullColour);
    if (has_avx2()) compare_full_colour(kAvx2FullColour);
}

} // namespace
} // namespace qm
