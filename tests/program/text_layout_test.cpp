#include "program/pixels/Surface.h"
#include "program/text/LineBreaker.h"
#include "program/text/TextLayout.h"
#include "program/text/line_spacing.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace qm {
namespace {

constexpr char32_t kLatin[] = U"The quick brown fox jumps over the lazy dog, again and again";
constexpr char32_t kChinese[] = U"今天天气很好，我们去公园。（明天也去！）天气预报说：后天有雨。";

Font& font(double size = 16) {
    static std::shared_ptr<Font> kept;
    kept = font_for({"DejaVu Sans", "", size, false, false});
    return *kept;
}

qm_G5_G6_fontData style(Ouint32 arrMode, Ouint8 halign = 0, Ouint8 valign = 0, Ouint16 space = 0) {
    qm_G5_G6_fontData s;
    s.arrMode = arrMode;
    s.Halign = halign;
    s.Valign = valign;
    s.txtSpace = space;
    return s;
}

std::u32string_view slice(std::u32string_view text, const TextLine& line) {
    return text.substr(line.begin, line.end - line.begin);
}

ShapedText shaped(std::u32string_view text) { return {std::u32string(text), font()}; }

std::vector<TextLine> broken(std::u32string_view text, int spacing, int width) {
    ShapedText whole = shaped(text);
    return break_lines(whole, spacing, width);
}

bool is_letter(char32_t c) { return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z'); }

TEST(LineBreaker, KeepsLatinWordsWholeAtEveryWidth) {
    const std::u32string_view text = kLatin;
    for (int width = 60; width < 400; width += 7) {
        for (const TextLine& line : broken(text, 0, width)) {
            if (line.end >= text.size()) continue;
            EXPECT_FALSE(is_letter(text[line.end - 1]) && is_letter(text[line.end])) << width;
            EXPECT_LE(shaped(text).measure(line, 0).width, width);
        }
    }
}

TEST(LineBreaker, LosesNoCharacterAndRepeatsNone) {
    for (const std::u32string_view text : {std::u32string_view(kLatin), std::u32string_view(kChinese)}) {
        for (int width = 1; width < 300; width += 11) {
            std::u32string kept;
            for (const TextLine& line : broken(text, 2, width)) kept += slice(text, line);
            std::u32string all(text);
            std::erase(all, U' ');
            std::erase(kept, U' ');
            EXPECT_EQ(kept, all) << width;
        }
    }
}

TEST(LineBreaker, NeverStartsALineWithClosingPunctuation) {
    const std::u32string_view text = kChinese, forbidden = U"，。！）：";
    for (int width = 50; width < 300; width += 3)
        for (const TextLine& line : broken(text, 0, width))
            EXPECT_EQ(forbidden.find(text[line.begin]), forbidden.npos) << width;
}

TEST(LineBreaker, BreaksAWordThatIsWiderThanTheArea) {
    const std::vector<TextLine> lines = broken(U"unbreakable", 0, 40);
    EXPECT_GT(lines.size(), 1U);
    for (const TextLine& line : lines) EXPECT_GT(line.end, line.begin);
}

TEST(LineBreaker, GivesTheSpaceAtTheEndOfALineNoRoom) {
    const int exactly = shaped(U"a bc").measure({0, 4}, 0).width;
    EXPECT_EQ(broken(U"a bc d", 0, exactly).front().end, 4U);
}

TEST(LineBreaker, TakesEachFormOfLineEndOnce) {
    const struct {
        std::u32string_view text, multi, single;
    } cases[] = {{U"a\r\nb", U"a\nb", U"a b"},
                 {U"a\rb\nc", U"a\nb\nc", U"a b c"},
                 {U"a\n\nb", U"a\n\nb", U"a  b"},
                 {U"a\tb\x01\x7F\xFEFF", U"a b", U"a b"}};
    for (const auto& c : cases) {
        EXPECT_EQ(clean_text(c.text, false), c.multi);
        EXPECT_EQ(clean_text(c.text, true), c.single);
    }
    EXPECT_EQ(broken(U"a\n\nb\n", 0, 100).size(), 3U);
    EXPECT_EQ(broken(U"a \nb", 0, 100).front().end, 1U) << "without the line end and the space before it";
}

TEST(LineBreaker, TakesALetterAndItsMarkAsOneWhereThereIsOne) {
    EXPECT_EQ(clean_text(U"\u0301e\u0301q\u0301\u1100\u1161", false), U"\u0301éq\u0301가");
}

TEST(TextLayout, PutsSpacingBetweenCharactersOnly) {
    const TextPages pages = lay_out(U"HHH", font(), style(MULTILINE, 2, 0, 5), {200, 32, Running::no});
    ASSERT_EQ(pages.glyphs.size(), 3U);
    const int advance = font().shape(U'H').advance;
    EXPECT_EQ(pages.glyphs[1].x - pages.glyphs[0].x, advance + 5);
    EXPECT_EQ(pages.glyphs[2].x + advance, 200) << "right aligned: no space behind the last character";
}

TEST(TextLayout, AlignsBothWays) {
    const int lineHeight = font().line_height(), advance = font().shape(U'H').advance;
    for (Ouint8 align = 0; align < 3; ++align) {
        const TextPages pages =
            lay_out(U"H\nH", font(), style(MULTILINE, align, align), {101, 3 * lineHeight, Running::no});
        ASSERT_EQ(pages.glyphs.size(), 2U);
        const int x[] = {0, (101 - advance) / 2, 101 - advance};
        const int y[] = {0, lineHeight / 2, lineHeight};
        EXPECT_EQ(pages.glyphs[0].x, x[align]);
        EXPECT_EQ(pages.glyphs[0].y, y[align] + font().ascent());
        EXPECT_EQ(pages.glyphs[1].y, pages.glyphs[0].y + lineHeight);
    }
}

TEST(TextLayout, CutsNoCharacterThatTheAreaHasRoomFor) {
    for (int size = 8; size <= 40; ++size) {
        Font& f = font(size);
        for (const int height : {16, 24, 32}) {
            const TextPages pages =
                lay_out(U"Ägjpq|Hf", f, style(MULTILINE, 0, 1), {1000, height, Running::no});
            int top = 1000, bottom = -1000;
            for (const PlacedGlyph& g : pages.glyphs) {
                top = std::min(top, g.y + g.shape->top);
                bottom = std::max(bottom, g.y + g.shape->bottom);
            }
            if (bottom - top > height) continue;
            EXPECT_GE(top, 0) << size << " pixels in " << height;
            EXPECT_LE(bottom, height) << size << " pixels in " << height;
        }
    }
}

int lit_pixels(Font& f, const TextPages& pages, int width, int height, int dx) {
    Canvas32 canvas(width, height);
    set_cairoColor(canvas.context(), eWhite);
    f.show(canvas.context(), pages.glyphs, dx);
    const auto* pixels = reinterpret_cast<const Ouint32*>(canvas.pixels());
    return static_cast<int>(width * height - std::count(pixels, pixels + width * height, 0U));
}

// Cairo slants the glyphs of a font file and makes them bold, and measures them as if it did not.
TEST(TextLayout, CutsNoSlantedOrBoldInk) {
    for (const double size : {12., 16., 33.}) {
        Font made({"", "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf", size, true, true});
        for (Ouint8 align = 0; align < 3; ++align) {
            const TextPages pages = lay_out(U"jWf", made, style(MULTILINE, align, 1), {150, 64, Running::no});
            ASSERT_EQ(pages.pages.size(), 1U);
            EXPECT_EQ(lit_pixels(made, pages, pages.pages[0].validWidth, 64, 0),
                      lit_pixels(made, pages, 350, 64, 100))
                << size << " pixels, " << unsigned{align};
        }
    }
}

TEST(TextLayout, FillsPagesWithAsManyLinesAsTheirInkAllows) {
    const GlyphShape &tall = font().shape(U'b'), &deep = font().shape(U'g');
    const int rows = deep.bottom - deep.top + 1 + tall.bottom - tall.top;
    ASSERT_LT(rows, 2 * font().line_height());
    const auto laid_out = [](int height) {
        return lay_out(U"g\nb\ng\nb\ng", font(), style(MULTILINE), {64, height, Running::no});
    };
    const TextPages pages = laid_out(rows);
    ASSERT_EQ(pages.pages.size(), 3U);
    EXPECT_EQ(pages.pages.back().count, 1U);
    EXPECT_EQ(pages.glyphs[0].y, -deep.top);
    EXPECT_EQ(pages.glyphs[1].y, rows - tall.bottom);
    EXPECT_EQ(laid_out(rows - 1).pages.size(), 5U);
    EXPECT_EQ(lay_out(U"a\nb", font(), style(MULTILINE), {64, 3, Running::no}).pages.size(), 2U)
        << "at least one line a page";
}

TEST(LineSpacing, LetsBitmapsStandCellToCellAndOthersShareTheRoom) {
    const FontRows font{14, 18};
    const LineInk hanzi{-13, 3, 16}, letters{-12, 3, 0};
    EXPECT_EQ(lines_that_fit(std::vector(3, hanzi), 32), 2U);
    EXPECT_EQ(baselines(std::vector(2, hanzi), 32, font, 1), (std::vector{13, 29}));
    EXPECT_EQ(lines_that_fit(std::vector(3, letters), 31), 2U);
    EXPECT_EQ(lines_that_fit(std::vector(3, letters), 30), 1U);
    EXPECT_EQ(baselines(std::vector(3, letters), 51, font, 0), (std::vector{12, 30, 48}));
    EXPECT_EQ(baselines(std::vector(3, letters), 54, font, 0), (std::vector{14, 32, 50}))
        << "as the font has it";
    const LineInk tall{-17, 5, 0};
    EXPECT_EQ(lines_that_fit(std::vector(3, tall), 45), 2U);
    EXPECT_EQ(baselines(std::vector(2, tall), 45, font, 0), (std::vector{17, 40})) << "of another font";
    EXPECT_EQ(baselines(std::vector(2, tall), 60, font, 2), (std::vector{32, 55}));
}

TEST(LineSpacing, PutsTextsAtTheBottomOnOneBaselineWhateverTheySay) {
    const FontRows font{14, 16, {-12, 3}};
    const auto at_bottom = [&](int top, int bottom, int height) {
        return baselines(std::vector{LineInk{top, bottom}}, height, font, 2).front();
    };
    EXPECT_EQ(at_bottom(-12, 0, 15), at_bottom(-9, 3, 15));
    EXPECT_EQ(at_bottom(-15, 0, 15), 15) << "before a character is cut";
    EXPECT_EQ(at_bottom(-12, 0, 14), 14) << "where not all letters find room";
}

TEST(TextLayout, CentresARunningTextThatFits) {
    const TextPages pages = lay_out(U"H", font(), style(SINGLELINE, 1), {65, 16, Running::left});
    ASSERT_EQ(pages.pages.size(), 1U);
    const int width = shaped(U"H").measure({0, 1}, 0).width;
    EXPECT_EQ(pages.endPageLen, (65 - width) / 2 + width);
}

TEST(TextLayout, StacksVerticalTextIntoColumns) {
    auto vertical = style(MULTILINE);
    vertical.tdirection = eVertical;
    const int cell = font().shape(U'a').bottom - font().shape(U'b').top + 1;
    const TextPages pages = lay_out(U"abc de\nf", font(), vertical, {200, 3 * cell - 1, Running::no});
    ASSERT_EQ(pages.pages.size(), 1U);
    ASSERT_EQ(pages.glyphs.size(), 6U) << "abc | de | f: the space that would start a column is left out";
    EXPECT_EQ(pages.glyphs[1].y - pages.glyphs[0].y, cell);
    EXPECT_EQ(pages.glyphs[3].y, pages.glyphs[0].y);
    EXPECT_GT(pages.glyphs[3].x, pages.glyphs[2].x);
    EXPECT_GT(pages.glyphs[5].x, pages.glyphs[4].x);

    vertical.Valign = 2;
    vertical.txtSpace = 3;
    const TextPages spaced = lay_out(U"db", font(), vertical, {200, 100, Running::no});
    EXPECT_EQ(spaced.glyphs[1].y, 100 - font().line_height() + font().ascent()) << "no space below the last";
    EXPECT_LT(spaced.glyphs[1].x, 100) << "aligned the one way only";

    vertical.Valign = 0;
    vertical.txtSpace = 0;
    vertical.arrMode = SINGLELINE;
    const LayoutFrame right{200, 3 * cell, Running::right, PageOrder::playing};
    const std::vector<TextPage> columns = lay_out(U"abcdef", font(), vertical, right).pages;
    ASSERT_EQ(columns.size(), 2U);
    EXPECT_GT(columns[0].first, columns[1].first) << "the last column comes in first";
}

TEST(TextLayout, SurvivesExtremeTexts) {
    const std::u32string text(100000, U'W');
    auto wide = style(SINGLELINE, 0, 0, 65535);
    // More pages than a file can count.
    EXPECT_THROW(lay_out(text, font(), wide, {128, 32, Running::left}), std::length_error);
    EXPECT_THROW(lay_out(text, font(), style(MULTILINE), {1, 1, Running::no}), std::length_error);
    EXPECT_THROW(lay_out(text.substr(0, 65536), font(), style(MULTILINE), {1, 1, Running::no}),
                 std::length_error);
    EXPECT_EQ(lay_out(text.substr(0, 65535), font(), style(MULTILINE), {1, 1, Running::no}).pages.size(),
              65535U);
    EXPECT_TRUE(lay_out(U"", font(), style(MULTILINE), {128, 32, Running::no}).pages.empty());
    EXPECT_EQ(lay_out(U"a\xFFFF b", font(), style(MULTILINE), {128, 32, Running::no}).glyphs.size(), 3U);
    EXPECT_LE(lay_out(text, font(0), style(SINGLELINE), {128, 32, Running::left}).pages.size(), 1U);
}

TEST(Font, TakesAMissingCharacterFromAnotherFont) {
    EXPECT_EQ(font().shape(U'A').face, 0U);
    EXPECT_NE(font().shape(U'好').face, 0U) << "DejaVu Sans has no Chinese, another installed font has";
    EXPECT_EQ(font().shape(U'\xE123').index, 0U) << "nobody has this one: the sign for a missing glyph";
}

TEST(Font, FindsACharacterWhateverItLookedForBefore) {
    Font used({"DejaVu Sans", "", 16, false, false});
    for (char32_t nobodys = 0xE200; nobodys < 0xE300; ++nobodys) EXPECT_EQ(used.shape(nobodys).index, 0U);
    EXPECT_NE(used.shape(U'好').index, 0U);
}

TEST(Font, IsAFileByItsName) {
    const struct {
        const char* name;
        bool isFile;
    } cases[] = {{"a.ttf", true},      {"fonts/A.TTF.old", true},
                 {"b.Ttc", true},      {"x.OTF", true},
                 {"x.otb", true},      {"x.pcf", true},
                 {"x.PCF.gz", true},   {"x.bdf", true},
                 {"x.otf.old", false}, {"x.pcf.gz2", false},
                 {"bdf", false},       {"DejaVu Sans", false},
                 {".bd", false},       {"", false}};
    for (const auto& c : cases) EXPECT_EQ(qm_is_font_file(c.name), c.isFile) << c.name;
}

} // namespace
} // namespace qm
