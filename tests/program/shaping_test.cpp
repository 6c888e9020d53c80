// Texts whose characters are drawn by more than a glyph each: against tables of what the shaper's and the
// direction's own tools say, and texts that mean harm.
#include "program/text/LineBreaker.h"
#include "program/text/TextLayout.h"
#include "program/text/character_classes.h"
#include "program/text/encoding.h"
#include "seeds.h"

#include <gtest/gtest.h>

#include <fstream>
#include <random>
#include <sstream>

namespace qm {
namespace {

constexpr char kFonts[] = "/usr/share/fonts/truetype/";

// The columns of a table, line by line.
std::vector<std::vector<std::string>> rows_of(const std::string& table) {
    std::ifstream file(QM_TABLES "/" + table);
    std::vector<std::vector<std::string>> rows;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with('#')) continue;
        std::istringstream fields(line);
        rows.emplace_back();
        for (std::string field; std::getline(fields, field, '\t');) rows.back().push_back(field);
    }
    return rows;
}

// Above and beside each other, in the form that fuzz/WantedText.h reads.
void keep_seeds(const std::string& text) {
    for (const Ouint8 flags : {Ouint8{0}, Ouint8{8}}) {
        ByteBuffer input{0, 1, 1, 0, 0, 63, 31, 1, 0, 1, flags, 0, 1};
        input.insert(input.end(), text.begin(), text.end());
        for (const char* target : {"text", "area_text"}) test::keep_seed(target, input);
    }
}

std::string printed(const ShapedGlyph& glyph) {
    std::string text = std::to_string(glyph.index);
    if (glyph.x != 0 || glyph.y != 0)
        text.append("@").append(std::to_string(glyph.x)).append(",").append(std::to_string(glyph.y));
    return text + "+" + std::to_string(glyph.advance);
}

// The glyphs of a text of one direction, as the tool prints them.
std::string shaped(Font& font, const std::u32string& text) {
    std::string all;
    for (const TextRun& run : runs_of(text, 0, embedding_levels(text).levels))
        for (const ShapedGlyph& glyph : font.shape(0, text, run))
            all += (all.empty() ? "[" : "|") + printed(glyph);
    return all + "]";
}

TEST(Shaping, GivesTheGlyphsAndAdvancesOfTheShapersOwnTool) {
    const auto rows = rows_of("shaped_glyphs.txt");
    ASSERT_EQ(rows.size(), 40U);
    for (const auto& row : rows) {
        keep_seeds(row[2]);
        Font font({"", kFonts + row[0], std::stod(row[1]) / 64, false, false});
        ASSERT_FALSE(font.is_substitute()) << row[0] << ": scripts/setup --tests installs it";
        EXPECT_EQ(shaped(font, utf32_of(row[2])), row[3]) << row[2];
    }
}

TEST(BidiOrder, IsThatOfTheAlgorithmsOwnTool) {
    const auto rows = rows_of("bidi_order.txt");
    ASSERT_EQ(rows.size(), 25U);
    for (const auto& row : rows) {
        std::string order;
        for (const Ouint32 number : visual_order(embedding_levels(utf32_of(row[0])).levels))
            order += (order.empty() ? "" : " ") + std::to_string(number);
        EXPECT_EQ(order, row[1]) << row[0];
    }
}

Font& font() {
    static Font kept({"DejaVu Sans", "", 16, false, false});
    return kept;
}

TEST(ShapedText, HasNoHyphensInColumns) {
    EXPECT_EQ(ShapedText(U"a\u00ADb", font(), true).size(), 2U);
    EXPECT_EQ(ShapedText(U"a\u00ADb", font()).size(), 3U) << "one that a line may end with";
}

// A modifier of emoji belongs to what stands before it, but runs the way of the text around them.
TEST(TextRuns, HaveCharactersOfOneLevel) {
    const std::u32string text = U"aא\U0001F3FB";
    const std::vector<Level> levels = embedding_levels(text).levels;
    ASSERT_NE(levels[1], levels[2]);
    for (const TextRun& run : runs_of(text, 0, levels))
        for (std::size_t i = run.begin; i < run.end; ++i) EXPECT_EQ(levels[i], run.level) << i;
}

std::vector<const GlyphShape*> shapes_from_left(const ShapedText& text, const TextLine& line) {
    std::vector<const GlyphShape*> shapes;
    text.place(line, 0, 0, [&](const GlyphShape& shape, int) { shapes.push_back(&shape); });
    return shapes;
}

int width_of(std::u32string text, int spacing) {
    const ShapedText shaped(std::move(text), font());
    return shaped.measure({0, shaped.size()}, spacing).width;
}

// A space at the end of a line stands at the side where the paragraph ends.
TEST(ShapedText, PutsTrailingSpacesBehindTheParagraph) {
    const ShapedText text(U"אב ab  ", font());
    const auto all = shapes_from_left(text, {0, text.size()}), cut = shapes_from_left(text, {0, 5});
    EXPECT_TRUE(all.front()->blank() && all[1]->blank());
    EXPECT_EQ(all[2], &font().shape(U'a'));
    EXPECT_EQ(cut.front(), &font().shape(U'a'));
}

TEST(ShapedText, KeepsTogetherWhatIsDrawnTogether) {
    const struct {
        std::u32string text;
        std::size_t clusters;
    } cases[] = {{U"e\u0301a", 2}, {U"क्षत्रिय", 3}, {U"हिन्दी", 2}, {U"ที่นี่", 2},
                 {U"لا", 1},       {U"שָׁלוֹם", 4},   {U"ខ្មែរ", 2},  {U"か\u3099", 1}};
    for (const auto& c : cases) EXPECT_EQ(ShapedText(c.text, font()).size(), c.clusters);
}

// Marks come before their letters when these run from right to left.
TEST(ShapedText, MeasuresWhatItDraws) {
    for (const std::u32string text : {U"שָׁלוֹם", U"مُحَمَّد", U"e\u0301", U"ที่นี่", U"हिन्दी"}) {
        const ShapedText shaped(text, font());
        for (std::size_t i = 0; i < shaped.size(); ++i) EXPECT_TRUE(shaped.shape(i).runs) << i;
    }
}

TEST(ShapedText, PutsNoSpacingBetweenJoinedLetters) {
    EXPECT_EQ(width_of(U"بيت", 5), width_of(U"بيت", 0));
    EXPECT_EQ(width_of(U"دار", 5), width_of(U"دار", 0) + 10) << "none of these joins the next";
    EXPECT_EQ(width_of(U"नमन", 5), width_of(U"नमन", 0)) << "the headline is one line";
    EXPECT_EQ(width_of(U"שלום", 5), width_of(U"שלום", 0) + 15);
    EXPECT_EQ(width_of(U"a\u200Bb", 5), width_of(U"ab", 5)) << "what has no ink has no room";
}

// Alone, each keeps its glyph and its pixels, whatever stands beside it.
TEST(ShapedText, DrawsPlainCharactersAsEver) {
    const ShapedText text(U"ab1 अ 好, e\u0301é", font());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t c = text.character(i);
        if (c != U'अ' && c != U'e') {
            EXPECT_EQ(&text.shape(i), &font().shape(c)) << i;
        }
    }
}

// The lines of a text, as characters, and with a bar between them.
std::u32string broken(const std::u32string& text, int width) {
    ShapedText shaped(text, font());
    std::u32string lines;
    for (const TextLine& line : break_lines(shaped, 0, width)) {
        if (!lines.empty()) lines += U'|';
        lines +=
            text.substr(shaped.begin_of(line.begin), shaped.begin_of(line.end) - shaped.begin_of(line.begin));
        EXPECT_TRUE(shaped.measure(line, 0).width <= width || line.end == line.begin + 1) << width;
    }
    return lines;
}

TEST(ShapedText, ShowsASoftHyphenWhereALineEnds) {
    ShapedText text(U"Donau\u00ADdampf", font());
    EXPECT_EQ(break_lines(text, 0, 500).size(), 1U);
    EXPECT_TRUE(text.shape(5).blank());
    EXPECT_EQ(break_lines(text, 0, width_of(U"Donau-", 0)).front().end, 6U);
    EXPECT_EQ(&text.shape(5), &font().shape(U'-'));
}

TEST(ShapedText, BreaksThaiBetweenWords) {
    const std::u32string words = U"ขอต้อนรับ|สู่|ประเทศ|ไทย|น้ำ|ดื่ม|ฟรี";
    std::u32string text = words;
    std::erase(text, U'|');
    for (int width = width_of(U"ขอต้อนรับ", 0); width < 200; ++width) {
        std::size_t word = 0; // the lines end where words do
        for (const char32_t c : broken(text, width)) {
            if (c == U'|') {
                EXPECT_EQ(words[word], c) << width;
            }
            if (words[word] == U'|') ++word;
            if (c != U'|') ++word;
        }
    }
    EXPECT_EQ(broken(U"ไทย", 8), U"ไ|ท|ย") << "a word alone is wider";
    std::u32string lines, many;
    for (int i = 0; i < 400; ++i) {
        lines += i > 0 ? U"|ประเทศ" : U"ประเทศ";
        many += U"ประเทศ";
    }
    EXPECT_EQ(broken(many, width_of(U"ประเทศ", 0) + 4), lines) << "however long it goes on";
}

TEST(ShapedText, BreaksInsideWordsAroundWhatIsDrawnTogether) {
    for (const std::u32string text : {U"مُحَمَّدوالسلامعليكم", U"क्षत्रियपूर्णिमा", U"ខ្មែរស្វាគមន៍", U"ທີ່ນີ້ມີນ້ຳ"})
        for (int width = 1; width < 100; width += 3) {
            std::u32string lines = broken(text, width);
            EXPECT_TRUE(width > 20 || lines.find(U'|') != lines.npos);
            for (std::size_t i = 1; i < lines.size(); ++i)
                EXPECT_FALSE(lines[i - 1] == U'|' && is_mark(lines[i])) << width;
            std::erase(lines, U'|');
            EXPECT_EQ(lines, text) << width;
        }
}

// The rows of a character in a column, trimmed, lit pixels as #.
std::vector<std::string> in_column(Font& f, char32_t c) {
    const GlyphShape& shape = f.vertical(c);
    Canvas32 canvas(shape.right - shape.left, shape.bottom - shape.top);
    set_cairoColor(canvas.context(), eWhite);
    const PlacedGlyph placed{&shape, -shape.left, -shape.top};
    f.show(canvas.context(), {&placed, 1}, 0);
    const auto* pixel = reinterpret_cast<const Ouint32*>(canvas.pixels());
    std::vector<std::string> rows;
    for (int y = 0; y < canvas.height(); ++y, pixel += canvas.width())
        for (int x = 0; x < canvas.width(); ++x) {
            if (x == 0) rows.emplace_back();
            rows.back() += pixel[x] != 0 ? '#' : ' ';
        }
    return rows;
}

TEST(VerticalForms, TurnPunctuationInTheMiddleOfTheColumn) {
    for (const double size : {12., 16., 24.}) {
        Font f({"DejaVu Sans", "", size, false, false});
        for (const char32_t c : std::u32string_view(U"—([…")) {
            const GlyphShape &upright = f.shape(c), &turned = f.vertical(c);
            ASSERT_EQ(turned.upright, &upright);
            EXPECT_EQ(turned.bottom - turned.top, upright.runs->box.right - upright.runs->box.left);
            EXPECT_NEAR(turned.left + turned.right, turned.advance, 1) << size;
        }
        EXPECT_EQ(&f.vertical(U'A'), &f.shape(U'A'));
        EXPECT_EQ(&f.vertical(U'→'), &f.shape(U'→'));
    }
}

TEST(VerticalForms, TurnClockwise) {
    Font f({"DejaVu Sans", "", 16, false, false});
    const auto rows = in_column(f, U'(');
    EXPECT_GT(rows.front().size(), rows.size()) << "lies on its back";
    EXPECT_GT(std::count(rows.front().begin(), rows.front().end(), '#'), 3) << "and is open below";
    EXPECT_EQ(rows.back().find('#'), 0U);
}

TEST(VerticalForms, TurnWhatStandsBesideLettersFromRightToLeft) {
    const ShapedText text(U"(אב)", font(), true);
    EXPECT_EQ(text.shape(0).upright, &font().shape(U'('));
    EXPECT_EQ(text.shape(3).upright, &font().shape(U')'));
}

// Alone, a letter does not reach out for its neighbour.
TEST(VerticalForms, StackLettersUnjoined) {
    const ShapedText column(U"بيت", font(), true), alone(U"ب", font(), true);
    EXPECT_EQ(&column.shape(0), &alone.shape(0));
}

TEST(VerticalForms, RaiseFullStops) {
    Font f({"WenQuanYi Micro Hei", "", 16, false, false});
    for (const char32_t c : std::u32string_view(U"、。")) {
        const GlyphShape &line = f.shape(c), &column = f.vertical(c);
        EXPECT_LT(line.left + line.right, line.advance);
        EXPECT_GT(column.left + column.right, column.advance) << "right";
        EXPECT_LT(column.bottom, line.top) << "and up";
        EXPECT_TRUE(column.runs) << "whose ink is where it was measured";
    }
}

qm_G5_G6_fontData lines() {
    qm_G5_G6_fontData style;
    style.arrMode = MULTILINE;
    return style;
}

TEST(ShapedText, TakesHostileTextsInTime) {
    const auto many = [](std::u32string_view unit, std::size_t times) {
        std::u32string text;
        for (std::size_t i = 0; i < times; ++i) text += unit;
        return text;
    };
    std::mt19937 random(1);
    std::string bytes(50000, '\0');
    for (char& byte : bytes) byte = static_cast<char>(random());
    const std::u32string texts[] = {U"a" + many(U"\u0301", 100000),
                                    U"ب" + many(U"\u064B\u0651", 50000),
                                    many(U"\u202E\u2067", 20000) + U"אa",
                                    many(U"\u2067", 20000) + many(U"א(", 20000),
                                    many(U"क्", 30000),
                                    many(U"ក្ត", 30000),
                                    many(U"\U0001F468\u200D", 30000),
                                    many(U"\U0001F1E9\U0001F1EA", 20000),
                                    many(U"بب", 20000),
                                    many(U"กาเ", 20000),
                                    many(U"\xD800\xDC00\xFFFFFFFFא", 5000),
                                    utf32_of(bytes)};
    for (const std::u32string& text : texts)
        for (const int width : {2000, 20}) {
            const TextPages pages = lay_out(text, font(), lines(), {width, 2000, Running::no});
            for (const PlacedGlyph& glyph : pages.glyphs)
                ASSERT_LE(glyph.shape->parts.size(), 4 * kLongestCluster);
        }
}

} // namespace
} // namespace qm
