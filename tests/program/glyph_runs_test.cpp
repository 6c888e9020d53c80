// Glyphs that are drawn once and then filled in must come out as cairo draws them, pixel by pixel.
#include "program/pixels/Surface.h"
#include "program/text/Font.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <functional>

namespace qm {
namespace {

constexpr char kFontFile[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";
constexpr char kChineseFile[] = "/usr/share/fonts/truetype/wqy/wqy-microhei.ttc";
constexpr char32_t kText[] = U"Åsfjl(g)@¾,中文字鮮";

struct Drawing {
    int width = 120, height = 40;
    int x = 0, y = 30; // where the text begins
    PixelBox clip{0, 0, 120, 40};
    Ouint32 color = eWhite;
};

// Cairo cuts a glyph that it has slanted to what it measures unslanted, but only where it touches an edge.
constexpr Drawing kRoomy{.width = 600, .height = 80, .x = 20, .y = 50, .clip = {0, 0, 600, 80}};

using Pixels = std::vector<Ouint32>;

Pixels drawn(const Drawing& drawing, const std::function<void(cairo_t*)>& draw) {
    Canvas32 canvas(drawing.width, drawing.height);
    cairo_t* c = canvas.context();
    const PixelBox& clip = drawing.clip;
    cairo_rectangle(c, clip.left, clip.top, clip.right - clip.left, clip.bottom - clip.top);
    cairo_clip(c);
    set_cairoColor(c, drawing.color);
    draw(c);
    Pixels pixels(static_cast<std::size_t>(drawing.width) * static_cast<std::size_t>(drawing.height));
    std::memcpy(pixels.data(), canvas.pixels(), 4 * pixels.size());
    return pixels;
}

// The characters that the chosen font has, side by side.
std::vector<PlacedGlyph> placed(Font& font, std::u32string_view text, const Drawing& drawing) {
    std::vector<PlacedGlyph> glyphs;
    int x = drawing.x;
    for (const char32_t c : text) {
        const GlyphShape& shape = font.shape(c);
        if (shape.face != 0) continue;
        glyphs.push_back({&shape, x, drawing.y});
        x += shape.advance;
    }
    return glyphs;
}

// A family without italic outlines, which the fonts' configuration would slant for others.
constexpr char kUpright[] = "WenQuanYi Micro Hei";

Pixels by_cairo(const FontChoice& choice, const std::vector<PlacedGlyph>& glyphs, const Drawing& drawing) {
    return drawn(drawing, [&](cairo_t* c) {
        select_font(c, choice);
        const bool slanted = choice.italic && choice.style == kUpright;
        const cairo_matrix_t matrix{choice.size, 0, slanted ? -0.2 * choice.size : 0, choice.size, 0, 0};
        cairo_set_font_matrix(c, &matrix);
        for (const PlacedGlyph& placed : glyphs) {
            const cairo_glyph_t glyph{placed.shape->index, double(placed.x), double(placed.y)};
            cairo_show_glyphs(c, &glyph, 1);
        }
    });
}

// How many of the glyphs were filled in, once they were found to look right.
std::size_t compare(const FontChoice& choice, const Drawing& drawing, std::u32string_view text = kText) {
    SCOPED_TRACE(testing::Message() << choice.style << choice.path << ' ' << choice.size
                                    << (choice.bold ? " bold" : "") << (choice.italic ? " italic" : "")
                                    << " at " << drawing.x << ',' << drawing.y);
    Font font(choice);
    const std::vector<PlacedGlyph> glyphs = placed(font, text, drawing);
    EXPECT_FALSE(glyphs.empty());
    const Pixels expected = by_cairo(choice, glyphs, drawing);
    EXPECT_NE(expected, Pixels(expected.size())) << "nothing is drawn";
    EXPECT_TRUE(drawn(drawing, [&](cairo_t* c) { font.show(c, glyphs, 0); }) == expected);
    return static_cast<std::size_t>(std::count_if(
        glyphs.begin(), glyphs.end(), [](const PlacedGlyph& g) { return g.shape->runs.has_value(); }));
}

TEST(GlyphRuns, AreWhatCairoDrawsInEveryFontStyleAndSize) {
    for (const auto& [family, file] : {std::pair{"DejaVu Sans", ""}, {kUpright, ""}, {"", kFontFile}})
        for (const double size : {6., 9., 12., 13., 16., 24., 33.})
            for (const bool bold : {false, true})
                for (const bool italic : {false, true})
                    EXPECT_GT(compare({family, file, size, bold, italic}, kRoomy), 5U);
}

TEST(GlyphRuns, StayInsideImageAndClipInEveryColour) {
    const FontChoice choice{"DejaVu Sans", "", 24, false, true};
    for (const int x : {-40, -7, 0, 90, 117})
        for (const int y : {-1, 3, 20, 30, 44})
            for (const PixelBox& clip : {PixelBox{0, 0, 120, 40}, {10, 5, 11, 39}, {30, 12, 100, 20}}) {
                Font font(choice);
                const Drawing drawing{.x = x, .y = y, .clip = clip, .color = 0x654321};
                const auto glyphs = placed(font, kText, drawing);
                EXPECT_TRUE(drawn(drawing, [&](cairo_t* c) { font.show(c, glyphs, 0); }) ==
                            by_cairo(choice, glyphs, drawing))
                    << x << ',' << y << ' ' << clip.left;
            }
    for (Ouint32 level = 0; level < 256; ++level)
        EXPECT_GT(compare(choice, {.color = level << 16U | (255 - level) << 8U | level}), 0U);
}

// What a font file's glyph lights lies inside what it measures, though cairo measures it neither slanted nor
// bold.
TEST(GlyphRuns, AreMeasured) {
    for (const char* file : {kFontFile, kChineseFile})
        for (const double size : {7., 12., 33., 40., 192., 400.})
            for (const bool bold : {false, true})
                for (const bool italic : {false, true}) {
                    Font font({"", file, size, bold, italic});
                    std::size_t touched = 0; // sides
                    for (const char32_t c : std::u32string_view(U"Wfj/~@gÇŐ中鮮")) {
                        const GlyphShape& shape = font.shape(c);
                        ASSERT_TRUE(shape.runs) << size << ' ' << unsigned{c};
                        const PixelBox& ink = shape.runs->box;
                        EXPECT_LE(shape.left, ink.left);
                        EXPECT_LE(shape.top, ink.top);
                        EXPECT_GE(shape.right, ink.right);
                        EXPECT_GE(shape.bottom, ink.bottom);
                        touched += (shape.left == ink.left) + (shape.top == ink.top);
                        touched += (shape.right == ink.right) + (shape.bottom == ink.bottom);
                    }
                    EXPECT_GT(touched, 11U) << "no more than that";
                }
}

// The runs of a font make room for new ones; what its glyphs measure and light stays the same.
TEST(GlyphRuns, AreDrawnAgainAfterOthersNeededTheRoom) {
    const FontChoice choice{"", kChineseFile, 96, false, true};
    const Drawing drawing{.width = 700, .height = 120, .x = 20, .y = 90, .clip = {0, 0, 700, 120}};
    Font fresh(choice), used(choice);
    auto before = placed(fresh, U"Wjf中字", drawing), after = placed(used, U"Wjf中字", drawing);
    const ShapedGlyph mark{static_cast<Ouint32>(before[2].shape->index), 0, 0, -640, 640, 0, false};
    const auto oneMark = fresh.cluster(0, {&mark, 1}), otherMark = used.cluster(0, {&mark, 1});
    before.insert(before.end(), {{&fresh.vertical(U'…'), 550, 90}, {oneMark.get(), 500, 90}});
    after.insert(after.end(), {{&used.vertical(U'…'), 550, 90}, {otherMark.get(), 500, 90}});
    used.shape(U'g');
    const GlyphRuns::Glyph first = *after[0].shape->runs;
    for (char32_t c = 0x4E00; c < 0x9FA5 && after[0].shape->runs->round == used.shape(c).runs->round;) ++c;
    const Pixels expected = drawn(drawing, [&](cairo_t* c) { fresh.show(c, before, 0); });
    EXPECT_TRUE(drawn(drawing, [&](cairo_t* c) { used.show(c, after, 0); }) == expected);
    EXPECT_NE(after[0].shape->runs->round, first.round) << "there was no need for the room";
    const GlyphShape &g = used.shape(U'G'), &same = fresh.shape(U'G');
    EXPECT_EQ(g.left, same.left);
    EXPECT_EQ(g.right, same.right);
}

TEST(GlyphRuns, AreNotKeptOfGlyphsThatTakeTooMuch) {
    const Drawing drawing{.width = 2000, .height = 2000, .y = 1800, .clip = {0, 0, 2000, 2000}};
    EXPECT_EQ(compare({"DejaVu Sans", "", 2000, false, false}, drawing, U"O"), 0U);
}

} // namespace
} // namespace qm
