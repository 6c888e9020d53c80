#include "program/HVarea.h"
#include "program/text/alignment.h"
#include "program/text/encoding.h"

#include <array>
#include <gtest/gtest.h>

namespace qm {
namespace {

TEST(Text, PlacesBlocks) {
    EXPECT_EQ(get_x_area(1, 11, 4), 3);
    EXPECT_EQ(get_x_area(2, 11, 4), 7);
    EXPECT_EQ(get_x_area(1, 4, 11), 0);
    EXPECT_EQ(get_x_area(3, 20, 4), 0);
    EXPECT_EQ(get_y_area(16, 1, 11), 2);
    EXPECT_EQ(get_y_area(16, 2, 12), 0);
}

TEST(HVarea, SetsPaletteAndTrueColours) {
    const struct {
        Ouint32 color;
        Ouint8 red, green, blue;
    } cases[] = {{eBlack, 0, 0, 0},
                 {eRed, 255, 0, 0},
                 {eYellow, 255, 255, 0},
                 {eMagenta, 255, 0, 255},
                 {0x000007, 255, 255, 255},
                 {0xFF123456, 0x12, 0x34, 0x56},
                 {8, 0, 0, 8}};
    for (const auto& c : cases) {
        Canvas32 canvas(1, 1);
        set_cairoColor(canvas.context(), c.color);
        cairo_paint(canvas.context());
        const Ouint8* pixel = canvas.pixels();
        EXPECT_EQ((std::array{pixel[2], pixel[1], pixel[0]}), (std::array{c.red, c.green, c.blue}))
            << c.color;
    }
}

TEST(ScreenSettings, ChoosesTheTransferModeByControllerType) {
    const struct {
        Ouint16 type;
        int mode;
        bool known;
    } cases[] = {{0x0163, 4, true},  {0x0066, 3, true},  {0x8166, 5, true},  {0x0555, 0, true},
                 {0x0056, 0, false}, {0x0766, 3, true},  {0x0866, 0, false}, {0x0655, 0, false},
                 {0x8374, 4, true},  {0x0074, 0, false}, {0x1462, 4, true},  {0x1562, 0, false},
                 {0x5363, 4, true},  {0x5463, 0, false}, {0x2251, 0, true},  {0x1451, 0, false},
                 {0x015F, 0, true},  {0x0152, 0, false}, {0x0058, 0, false}};
    for (const auto& c : cases) {
        ScreenSettings settings;
        testing::internal::CaptureStdout();
        settings.set(SCREEN_COLOR_SINGLE, c.type, DOUBLE_COLOR_PIXTYPE_2);
        EXPECT_EQ(testing::internal::GetCapturedStdout(),
                  c.known ? "" : "Error:can't find tranPixelMode,use 0 instead.\n")
            << std::hex << c.type;
        EXPECT_EQ(settings.m_tranMode, c.mode) << std::hex << c.type;
        EXPECT_EQ(settings.layout().doubleColorPixel, static_cast<int>(DOUBLE_COLOR_PIXTYPE_2));
        EXPECT_EQ(settings.layout().alignPixels, c.mode == 4 ? 32U : 8U);
    }
}

} // namespace
} // namespace qm
