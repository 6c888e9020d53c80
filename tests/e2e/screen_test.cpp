// What stands on the LED screen, pixel for pixel, for every controller and colour.
#include "drawing.h"
#include "simulator/Simulator.h"

#include <gtest/gtest.h>

#include <atomic>
#include <filesystem>
#include <random>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1";
constexpr char kText[] = "Sign jgp!";
constexpr int kWidth = 96, kHeight = 24;

// The first and the last variant of every range of controllers, and what their pixels look like.
enum class Pixels { planes, full565, full888 };
struct Series {
    Ouint8 series;
    std::vector<Ouint8> variants;
    Pixels pixels;
};
const Series kSeries[] = {
    {0x50, {0}, Pixels::planes},
    {0x51, {0, 9, 0x13, 0x15, 0x16, 0x18, 0x22}, Pixels::planes},
    {0x52, {0, 2, 5}, Pixels::planes},
    {0x53, {0}, Pixels::planes},
    {0x54, {1, 3}, Pixels::planes},
    {0x55, {0, 5, 7, 8}, Pixels::planes},
    {0x58, {0}, Pixels::planes},
    {0x5E, {1, 6}, Pixels::planes},
    {0x62, {0, 5, 0x10, 0x14}, Pixels::planes},
    {0x63, {0, 4, 0x20, 0x24, 0x30, 0x34, 0x40, 0x44, 0x50, 0x53}, Pixels::planes},
    {0x64, {0, 5}, Pixels::planes},
    {0x66, {0, 7}, Pixels::full565},
    {0x66, {1, 6, 0x81}, Pixels::full888},
    {0x74, {1, 5, 0x83}, Pixels::planes},
};

struct Screen {
    Ouint32 color;
    Leds leds;
};
std::vector<Screen> screens_of(Pixels pixels) {
    if (pixels == Pixels::full565) return {{SCREEN_COLOR_FULLCOLOR, Leds::full565}};
    if (pixels == Pixels::full888) return {{SCREEN_COLOR_FULLCOLOR, Leds::full888}};
    return {{SCREEN_COLOR_SINGLE, Leds::single},
            {SCREEN_COLOR_DOUBLE, Leds::dual},
            {SCREEN_COLOR_THREE, Leds::three}};
}

sim::Options controller(Ouint16 type, Ouint32 color) {
    sim::Options options;
    options.type = type;
    options.width = kWidth;
    options.height = kHeight;
    options.color = static_cast<sim::ScreenColor>(color);
    return options;
}

class EveryController : public testing::TestWithParam<Series> {};

TEST_P(EveryController, ShowsTheTextThatCairoDraws) {
    const sim::Image yellow = text_image("DejaVu Sans", 16, kText, {255, 255, 0}, kWidth - 5, kHeight - 2);
    ASSERT_GT(lit_pixels(yellow), 50);
    for (const Ouint8 variant : GetParam().variants) {
        for (const Screen& screen : screens_of(GetParam().pixels)) {
            const auto type = static_cast<Ouint16>(variant << 8 | GetParam().series);
            const sim::Simulator sim(controller(type, screen.color));
            ASSERT_EQ(show_text(sim, type, screen.color, rectangle(5, 2, kWidth - 5, kHeight - 2),
                                still_text(12, eYellow), kText),
                      0)
                << std::hex << type;
            const sim::Image expected = on_screen(yellow, screen.leds, 5, 2, kWidth, kHeight);
            EXPECT_EQ(differing_pixels(sim.screen(), expected), 0)
                << std::hex << type << " colour " << screen.color;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Screen, EveryController, testing::ValuesIn(kSeries), [](const auto& test) {
    return "Type" + std::to_string(test.param.series) + "Variant" + std::to_string(test.param.variants[0]);
});

TEST(Screen, ShowsARandomPictureAtEveryOffset) {
    const std::string path = testing::TempDir() + "qm_random.png";
    std::mt19937 random(7);
    HVpageHeader_G6 page = still_text(12, 1);
    for (int x = 0; x < 40; x += 7) {
        sim::Image picture(41, 13);
        for (auto& byte : picture.rgb) byte = static_cast<std::uint8_t>(random());
        write_png(picture, path);
        for (const auto& [type, pixels] : {std::pair<Ouint16, Pixels>{0x0051, Pixels::planes},
                                           {0x0262, Pixels::planes},
                                           {0x0066, Pixels::full565},
                                           {0x8166, Pixels::full888}}) {
            for (const Screen& screen : screens_of(pixels)) {
                const sim::Simulator sim(controller(type, screen.color));
                const auto area = rectangle(static_cast<Ouint16>(x), 5, 41, 13);
                ASSERT_EQ(show_picture(sim, type, screen.color, area, page, path.c_str()), 0);
                const sim::Image expected = on_screen(picture, screen.leds, x, 5, kWidth, kHeight);
                EXPECT_EQ(differing_pixels(sim.screen(), expected), 0) << std::hex << type << " at " << x;
            }
        }
    }
    std::filesystem::remove(path);
}

TEST(Screen, ShowsTheSimpleTextCentredAndRed) {
    std::atomic<std::chrono::milliseconds> up{};
    auto options = controller(0x0262, SCREEN_COLOR_DOUBLE);
    options.uptime = [&] { return up.load(); };
    const sim::Simulator sim(options);
    ASSERT_EQ(dynamicArea_AddAreaTxt_6G(kHost, sim.port(), SCREEN_COLOR_DOUBLE, 0, 0, 0, kWidth, kHeight,
                                        "DejaVu Sans", 12, "HH"),
              0);
    EXPECT_EQ(lit_pixels(sim.screen()), 0) << "it runs in";
    up = kWidth * std::chrono::milliseconds(sim.dynamic_areas()[0].pages[0].speed + 1);
    const sim::Image screen = sim.screen();
    int left = kWidth, right = -1, top = kHeight, bottom = -1;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            if (screen.at(x, y) == sim::Rgb{}) continue;
            EXPECT_EQ(screen.at(x, y), (sim::Rgb{255, 0, 0}));
            left = std::min(left, x), right = std::max(right, x);
            top = std::min(top, y), bottom = std::max(bottom, y);
        }
    EXPECT_NEAR(left, kWidth - 1 - right, 2);
    EXPECT_NEAR(top, kHeight - 1 - bottom, 2);
}

} // namespace
} // namespace qm::test
