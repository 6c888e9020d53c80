// What is drawn when no font is named can be told apart from a distance.
#include "program/text/Font.h"

#include <gtest/gtest.h>

#include <bitset>

namespace qm {
namespace {

constexpr char32_t kLetters[] = U"ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
// The commonest 500.
constexpr char32_t kHanzi[] =
    U"的一是不了在人有我他这个们中来上大为和国地到以说时要就出会可也你对生能而子那得于"
    U"着下自之年过发后作里用道行所然家种事成方多经么去法学如都同现当没动面起看定天分还"
    U"进好小部其些主样理心她本前开但因只从想实日军者意无力它与长把机十民第公此已工使情"
    U"明性知全三又关点正业外将两高间由问很最重并物手应战向头文体政美相见被利什二等产或"
    U"新己制身果加西斯月话合回特代内信表化老给世位次度门任常先海通教儿原东声提立及比员"
    U"解水名真论处走义各入几口认条平系气题活尔更别打女变四神总何电数安少报才结反受目太"
    U"量再感建务做接必场件计管期市直德资命山金指克许统区保至队形社便空决治展马科司五基"
    U"眼书非则听白却界达光放强即像难且权思王象完设式色路记南品住告类求据程北边死张该交"
    U"规万取拉格望觉术领共确传师观清今切院让识候带导争运笔谈容爱改收根干造百流影请技准"
    U"究林温八研快办议往元英士证近失转夫令布始怎呢存未远叫台单具罗字击备兵连调深商算质"
    U"团集需价花党华城石级整府离况亚际约示复病息线似官火断精满支视消越器照须九增写称企"
    U"功吗包片史委乎查轻易早曾除农找装广显吧阿李标吃图念六引历首医局突专费号尽另周较注"
    U"语仅考落青随选列武红响虽推势参希古众构房";

constexpr int kSide = 64, kBaseline = 40;
using Picture = std::bitset<kSide * kSide>;

bool lit(const Picture& picture, int x, int y) { return picture[static_cast<std::size_t>(y * kSide + x)]; }

// A character with its left edge at the left.
Picture picture_of(Font& font, char32_t character) {
    const GlyphShape& shape = font.shape(character);
    const PlacedGlyph placed{&shape, -shape.left, kBaseline};
    Canvas32 canvas(kSide, kSide);
    set_cairoColor(canvas.context(), eWhite);
    font.show(canvas.context(), {&placed, 1}, 0);
    const auto* pixels = reinterpret_cast<const Ouint32*>(canvas.pixels());
    Picture picture;
    for (std::size_t i = 0; i < picture.size(); ++i) picture[i] = pixels[i] != 0;
    return picture;
}

Font automatic(Ouint16 points, bool bold = false) {
    return Font({kAutomaticFont, "", pixels_of_points(points), bold, false});
}

TEST(Legibility, OfLettersAndDigits) {
    for (const int points : {6, 9, 10, 11, 12, 18, 21}) {
        Font font = automatic(static_cast<Ouint16>(points));
        std::vector<Picture> pictures;
        std::string alike;
        int nearly = 0;
        for (const char32_t c : std::u32string_view(kLetters)) {
            pictures.push_back(picture_of(font, c));
            for (std::size_t i = 0; i + 1 < pictures.size(); ++i) {
                const std::size_t apart = (pictures[i] ^ pictures.back()).count();
                nearly += apart <= 2;
                if (apart == 0) alike += {static_cast<char>(kLetters[i]), static_cast<char>(c), ' '};
            }
        }
        EXPECT_EQ(alike, "") << points << " points";
        EXPECT_LE(nearly, 10) << points << " points";
    }
}

// Where a clock has to be smaller than any text, its digits use all rows and do not touch.
TEST(Legibility, OfTheDigitsOfSmallClocks) {
    Font font({kAutomaticFont, "", 7, false, false});
    for (char32_t digit = U'0'; digit <= U'9'; ++digit) {
        const GlyphShape& shape = font.shape(digit);
        EXPECT_GE(shape.bottom - shape.top, 6);
        EXPECT_LT(shape.right - shape.left, shape.advance);
    }
}

// How many parts the lit or the dark pixels of a picture have; dark ones that touch at a corner are apart.
int parts_of(Picture picture, bool ink) {
    if (!ink) picture.flip();
    const auto spread = [&](auto&& self, int x, int y) -> void {
        if (x < 0 || y < 0 || x >= kSide || y >= kSide || !lit(picture, x, y)) return;
        picture.reset(static_cast<std::size_t>(y * kSide + x));
        for (int dy = -1; dy <= 1; ++dy)
            for (int dx = -1; dx <= 1; ++dx)
                if (ink || dx == 0 || dy == 0) self(self, x + dx, y + dy);
    };
    int parts = 0;
    for (int i = 0; i < kSide * kSide; ++i)
        if (lit(picture, i % kSide, i / kSide)) {
            spread(spread, i % kSide, i / kSide);
            ++parts;
        }
    return parts;
}

// The counters of letters that have one, and of those that have two; dots.
TEST(Legibility, OfBoldLetters) {
    for (const int points : {6, 7, 8, 9, 10, 11, 12, 18}) {
        Font font = automatic(static_cast<Ouint16>(points), true);
        const auto dark = [&](char32_t c) { return parts_of(picture_of(font, c), false); };
        for (const char32_t c : std::u32string_view(U"ADOPQRabdegopq469"))
            EXPECT_GE(dark(c), 2) << static_cast<char>(c) << points << " points";
        for (const char32_t c : std::u32string_view(U"B8"))
            EXPECT_GE(dark(c), 3) << static_cast<char>(c) << points << " points";
        for (const char32_t c : std::u32string_view(U"ij!?:"))
            EXPECT_EQ(parts_of(picture_of(font, c), true), 2) << static_cast<char>(c) << points << " points";
    }
}

TEST(Legibility, OfBoldHanziOfAFontWithoutBold) {
    for (const int points : {8, 13, 15, 17}) {
        Font regular = automatic(static_cast<Ouint16>(points)),
             bold = automatic(static_cast<Ouint16>(points), true);
        int closed = 0;
        for (const char32_t c : std::u32string_view(kHanzi)) {
            const Picture thin = picture_of(regular, c), thick = picture_of(bold, c);
            closed += parts_of(thick, false) < parts_of(thin, false);
            EXPECT_GT(thick.count(), thin.count());
        }
        EXPECT_EQ(closed, 0) << points << " points";
    }
}

// Hindi, Thai, hanzi and Arabic, whose families have none.
TEST(Legibility, OfItalicIsThatOfSlantedLetters) {
    Font upright = automatic(18), italic({kAutomaticFont, "", pixels_of_points(18), false, true});
    for (const char32_t c : std::u32string_view(U"क好ב"))
        EXPECT_GT((picture_of(upright, c) ^ picture_of(italic, c)).count(), 10U) << static_cast<unsigned>(c);
}

bool has_solid_block(const Picture& picture) {
    const auto solid = [&](int left, int top) {
        for (int i = 0; i < 9; ++i)
            if (!lit(picture, left + i % 3, top + i / 3)) return false;
        return true;
    };
    for (int y = 0; y < kSide - 2; ++y)
        for (int x = 0; x < kSide - 2; ++x)
            if (solid(x, y)) return true;
    return false;
}

TEST(Legibility, OfHanzi) {
    ASSERT_EQ(std::size(kHanzi), 501U);
    for (const int points : {9, 10, 11, 12}) {
        Font font = automatic(static_cast<Ouint16>(points));
        int clotted = 0;
        for (const char32_t c : std::u32string_view(kHanzi)) {
            clotted += has_solid_block(picture_of(font, c));
            EXPECT_NE(font.shape(c).index, 0U);
        }
        EXPECT_LE(clotted, 2) << points << " points";
    }
}

} // namespace
} // namespace qm
