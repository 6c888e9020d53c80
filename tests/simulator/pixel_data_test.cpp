// Pixel data as the LEDs show it. Every byte was worked out by hand: a bit of 0 is a lit LED, the leftmost
// pixel is the most significant bit.
#include "simulator/playback/PixelReader.h"
#include "simulator/protocol/PixelFormat.h"

#include "hex.h"
#include "samples.h"

namespace qm::sim {
namespace {

using qm::test::hex;

constexpr TransferMode kPlanes8 = TransferMode::planes8, kPlanes32 = TransferMode::planes32;
constexpr TransferMode k16 = TransferMode::rgb565, k24 = TransferMode::rgb888;

struct PictureCase {
    const char* name;
    PixelFormat format;
    Rect rect;
    const char *data, *picture;
};

class PixelPicture : public testing::TestWithParam<PictureCase> {};

TEST_P(PixelPicture, LooksAsItWasMeant) {
    const PictureCase& c = GetParam();
    const ByteBuffer data = hex(c.data);
    EXPECT_EQ(pixel_data_length(c.format, c.rect), data.size());
    const PixelReader reader(c.format, c.rect, data);
    Image image(c.rect.width, c.rect.height);
    for (int y = 0; y < image.height; ++y)
        for (int x = 0; x < image.width; ++x) image.set(x, y, reader.at(x, y));
    EXPECT_EQ(test::letters(image), c.picture);
}

INSTANTIATE_TEST_SUITE_P(
    , PixelPicture,
    testing::Values(
        // 3 dark pixels before and after: 111(0 1111 1111 0)111
        PictureCase{
            "SingleInsideBytes", {kPlanes8, ScreenColor::single}, {3, 0, 10, 1}, "EF F7", "R........R"},
        // green plane 1110 1110, red plane 0110 1111
        PictureCase{"DoubleGreenFirst", {kPlanes8, ScreenColor::dual}, {0, 0, 8, 1}, "EE 6F", "R..Y...G"},
        PictureCase{"DoubleTakesTurnsEvery8Pixels",
                    {kPlanes8, ScreenColor::dual},
                    {8, 0, 16, 2},
                    "FF 7F 7F FF FE FF FF FF",
                    "R.......G......./.......G........"},
        PictureCase{
            "Three", {kPlanes8, ScreenColor::three}, {0, 0, 8, 2}, "6F AF CF FE FE FE", "RGBW..../.......W"},
        PictureCase{"WordsBackToFront",
                    {kPlanes32, ScreenColor::single},
                    {0, 0, 32, 1},
                    "FE 7F FF 7F",
                    "R...............R..............R"},
        // Pixel 31 is the last of one word, pixel 32 the first of the next.
        PictureCase{"WordsAcrossTheirEdge",
                    {kPlanes32, ScreenColor::single},
                    {31, 0, 2, 1},
                    "FE FF FF FF FF FF FF 7F",
                    "RR"},
        // red 010 / 110, green 100 / 111 behind one another
        PictureCase{"DoubleWordsPlaneAfterPlane",
                    {kPlanes32, ScreenColor::dual},
                    {0, 0, 3, 2},
                    "FF FF FF 5F FF FF FF DF FF FF FF 9F FF FF FF FF",
                    "RGY/..R"},
        PictureCase{"ThreeWords",
                    {kPlanes32, ScreenColor::three},
                    {1, 0, 2, 1},
                    "FF FF FF BF FF FF FF DF FF FF FF 9F",
                    "MC"},
        PictureCase{"Full16",
                    {k16, ScreenColor::full},
                    {5, 0, 3, 2},
                    "1F 00 E0 07 00 F8 FF FF 00 00 1F F8",
                    "RGB/W.M"},
        PictureCase{
            "Full24", {k24, ScreenColor::full}, {5, 0, 2, 2}, "FF 00 00 00 FF 00 00 00 FF 01 00 00", "RG/B?"},
        PictureCase{"FullHasNoPlanes", {kPlanes32, ScreenColor::full}, {0, 0, 2, 1}, "", ".."},
        PictureCase{"LedsHaveNoGrades", {k24, ScreenColor::dual}, {0, 0, 2, 1}, "", ".."}),
    [](const auto& which) { return which.param.name; });

TEST(FullColor, GradesAreSpreadOverTheWholeScale) {
    const ByteBuffer half = hex("10 84 01 00"); // 10000 100000 10000, then red alone at its lowest
    const PixelReader reader({k16, ScreenColor::full}, {0, 0, 2, 1}, half);
    EXPECT_EQ(reader.at(0, 0), (Rgb{0x84, 0x82, 0x84}));
    EXPECT_EQ(reader.at(1, 0), (Rgb{8, 0, 0}));
    const ByteBuffer exact = hex("01 80 FE");
    EXPECT_EQ(PixelReader({k24, ScreenColor::full}, {0, 0, 1, 1}, exact).at(0, 0), (Rgb{1, 0x80, 0xFE}));
}

TEST(PixelReaderBounds, MissingBytesAreDark) {
    for (const PixelFormat format : {PixelFormat{kPlanes8, ScreenColor::dual},
                                     {kPlanes32, ScreenColor::three},
                                     {k16, ScreenColor::full},
                                     {k24, ScreenColor::full}}) {
        const ByteBuffer cut(1, 0x00);
        const PixelReader reader(format, {0, 0, 4000, 4000}, cut);
        EXPECT_EQ(reader.at(3999, 3999), Rgb{});
    }
}

TEST(Series, DecidesLayoutAndFraming) {
    struct Row {
        std::uint16_t type;
        TransferMode mode;
        Generation generation;
    };
    const Row rows[] = {
        {0x2251, kPlanes8, Generation::five}, {0x065E, kPlanes8, Generation::five},
        {0x015F, kPlanes8, Generation::none}, {0x0058, kPlanes8, Generation::six},
        {0x1462, kPlanes32, Generation::six}, {0x0662, kPlanes8, Generation::six},
        {0x5363, kPlanes32, Generation::six}, {0x5463, kPlanes8, Generation::six},
        {0x0564, kPlanes32, Generation::six}, {0x0066, k16, Generation::six},
        {0x0766, k16, Generation::six},       {0x0166, k24, Generation::six},
        {0x8166, k24, Generation::six},       {0x0866, kPlanes8, Generation::six},
        {0x8374, kPlanes32, Generation::six}, {0xFFFE, kPlanes8, Generation::none},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(packing_of(row.type), row.mode) << std::hex << row.type;
        EXPECT_EQ(generation_of(row.type), row.generation) << std::hex << row.type;
    }
}

} // namespace
} // namespace qm::sim
