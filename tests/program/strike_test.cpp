// Bitmaps are drawn as they are, in the size that a font has them.
#include "bitmap_font.h"
#include "program/text/InstalledFonts.h"
#include "program/text/ShapedText.h"
#include "support/TemporaryFile.h"

#include <gtest/gtest.h>

namespace qm {
namespace {

constexpr unsigned char kRows[] = {0x20, 0x50, 0x90, 0x81, 0xFF, 0x81, 0x81, 0xC3};

// What a font of 8 pixels shows of its only letter, a row of '#' and '.' a line.
std::string drawn(double pixels, bool bold = false, bool italic = false) {
    const std::string content = test::bitmap_font(8, 0, kRows);
    const TemporaryFile file(Bytes(reinterpret_cast<const Ouint8*>(content.data()), content.size()));
    Font font({"", file.path(), pixels, bold, italic});
    const PlacedGlyph letter{&font.shape(U'A'), 1, 8};
    Canvas32 canvas(12, 9);
    set_cairoColor(canvas.context(), eWhite);
    font.show(canvas.context(), {&letter, 1}, 0);
    std::string rows;
    const auto* pixel = reinterpret_cast<const Ouint32*>(canvas.pixels());
    for (int y = 0; y < canvas.height(); ++y, rows += '\n')
        for (int x = 0; x < canvas.width(); ++x, ++pixel) rows += *pixel ? '#' : '.';
    return rows;
}

TEST(Strike, IsDrawnUnscaledInEverySize) {
    const std::string plain = "...#........\n..#.#.......\n.#..#.......\n.#......#...\n.########...\n"
                              ".#......#...\n.#......#...\n.##....##...\n............\n";
    for (const double pixels : {4, 8, 12, 100}) EXPECT_EQ(drawn(pixels), plain) << pixels;
}

TEST(Strike, IsMadeBoldWithItsGapsOpenAndItalicByWholePixels) {
    EXPECT_EQ(drawn(8, true), "...##.......\n..#.##......\n.##.##......\n.##.....##..\n.#########..\n"
                              ".##.....##..\n.##.....##..\n.###...###..\n............\n");
    EXPECT_EQ(drawn(8, false, true), "....#.......\n...#.#......\n..#..#......\n..#......#..\n.########...\n"
                                     ".#......#...\n.#......#...\n.##....##...\n............\n");
}

TEST(Strike, OfAFamilyIsTheLargestThatIsNotTooLarge) {
    for (const auto& [wanted, strike] : {std::pair{18., 18}, std::pair{23., 20}, std::pair{100., 24}})
        EXPECT_EQ(Font({"Fixed", "", wanted, false, false}).chosen_face().strike(), strike) << wanted;
}

TEST(Strike, OrOutlineIsChosenByTheSizeWhereNoFontIsNamed) {
    for (const auto& [pixels, family] :
         {std::pair{8., "Clean"}, std::pair{9., "Go"}, std::pair{13., "Go"}, std::pair{14., "Arimo"},
          std::pair{17., "Arimo"}, std::pair{18., "Go"}, std::pair{25., "Go"}, std::pair{26., "Arimo"}})
        EXPECT_STREQ(preferred_families(pixels).front(), family) << pixels;
}

// In their order, with their brackets mirrored and their marks above them.
TEST(Strike, DrawsWhatHasToBePutTogether) {
    Font fixed({"Fixed", "", 20, false, false});
    ASSERT_EQ(fixed.chosen_face().strike(), 20) << "scripts/setup installs it";
    EXPECT_EQ(fixed.face_with(U"(שלום)"), 0U);
    const ShapedText hebrew(U"(ש", fixed);
    EXPECT_EQ(hebrew.shape(0).parts.front().index, fixed.shape(U')').index);
    const ShapedText mark(U"q\u0301", fixed);
    ASSERT_EQ(mark.size(), 1U);
    EXPECT_LT(mark.shape(0).top, fixed.shape(U'q').top);
}

} // namespace
} // namespace qm
