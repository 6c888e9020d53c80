#include "program/text/character_classes.h"

#include <algorithm>
#include <iterator>

namespace qm {
namespace {

struct Range {
    char32_t first, last;
};

constexpr char32_t kZeroWidthJoiner = 0x200D;

// Characters of which each has a glyph that stands right of the one before: Latin, Greek, Cyrillic, Armenian,
// Georgian, Cherokee, Ethiopic, syllables, symbols, hanzi, kana, hangul, private use.
constexpr Range kPlain[] = {{0, 0x2FF},         {0x370, 0x482},     {0x48A, 0x58F},     {0x10A0, 0x10FF},
                            {0x1200, 0x135C},   {0x1360, 0x16FF},   {0x18B0, 0x18FF},   {0x1C80, 0x1CBF},
                            {0x1D00, 0x1DBF},   {0x1E00, 0x200A},   {0x2010, 0x2027},   {0x202F, 0x205F},
                            {0x2070, 0x20CF},   {0x2100, 0x2CEE},   {0x2CF2, 0x2D7E},   {0x2D80, 0x2DDF},
                            {0x2E00, 0x3029},   {0x3030, 0x3098},   {0x309B, 0xA66E},   {0xA673, 0xA673},
                            {0xA67E, 0xA69D},   {0xA700, 0xA7FF},   {0xAB30, 0xABBF},   {0xAC00, 0xD7A3},
                            {0xD800, 0xFB17},   {0xFE10, 0xFE1F},   {0xFE30, 0xFE6F},   {0xFF00, 0xFFFF},
                            {0x16FE0, 0x18DFF}, {0x1AFF0, 0x1B2FF}, {0x1D400, 0x1D7FF}, {0x1F000, 0x1F1E5},
                            {0x1F200, 0x1F3FA}, {0x1F400, 0x1FAFF}, {0x20000, 0x3FFFF}, {0xF0000, 0x10FFFD}};

constexpr Range kIgnorable[] = {{0xAD, 0xAD},     {0x34F, 0x34F},   {0x61C, 0x61C},     {0x17B4, 0x17B5},
                                {0x180B, 0x180F}, {0x200B, 0x200F}, {0x202A, 0x202E},   {0x2060, 0x206F},
                                {0xFE00, 0xFE0F}, {0xFEFF, 0xFEFF}, {0x1D173, 0x1D17A}, {0xE0000, 0xE0FFF}};

// Brackets, dashes, quotation marks, ellipses, long vowel marks (UTR 50).
constexpr Range kTurned[] = {{'(', ')'},       {'-', '-'},       {'[', '['},       {']', ']'},
                             {'{', '{'},       {'}', '~'},       {0xAB, 0xAB},     {0xBB, 0xBB},
                             {0x2010, 0x201F}, {0x2024, 0x2026}, {0x2039, 0x203A}, {0x2329, 0x232A},
                             {0x27E6, 0x27EF}, {0x2E3A, 0x2E3B}, {0x3008, 0x3011}, {0x3014, 0x301F},
                             {0x3030, 0x3030}, {0x30A0, 0x30A0}, {0x30FC, 0x30FC}, {0xFE59, 0xFE5E},
                             {0xFF08, 0xFF09}, {0xFF0D, 0xFF0D}, {0xFF1A, 0xFF1B}, {0xFF3B, 0xFF3B},
                             {0xFF3D, 0xFF3D}, {0xFF3F, 0xFF3F}, {0xFF5B, 0xFF60}, {0xFFE3, 0xFFE3}};

constexpr Range kRaised[] = {{0x3001, 0x3002}, {0xFF0C, 0xFF0C}, {0xFF0E, 0xFF0E}};

template <std::size_t N> bool is_in(const Range (&ranges)[N], char32_t c) {
    const auto ends_before = [](const Range& range, char32_t value) { return range.last < value; };
    const auto found = std::lower_bound(std::begin(ranges), std::end(ranges), c, ends_before);
    return found != std::end(ranges) && found->first <= c;
}

// Ties the letter behind it to the one before. Those of Tamil and Thai only silence a vowel.
bool is_virama(char32_t c) {
    constexpr unsigned kVirama = HB_UNICODE_COMBINING_CLASS_VIRAMA;
    return c >= 0x94D && c != 0xBCD && c != 0xE3A && c != 0xEBA &&
           hb_unicode_combining_class(hb_unicode_funcs_get_default(), c) == kVirama;
}

bool is_emoji_modifier(char32_t c) { return c >= 0x1F3FB && c <= 0x1F3FF; }

} // namespace

bool needs_shaping(char32_t c) {
    if (c < 0x300 || (c >= 0x309B && c < 0xA66F)) return false; // most of what is shown
    return !is_in(kPlain, c);
}

hb_unicode_general_category_t general_category(char32_t c) {
    return hb_unicode_general_category(hb_unicode_funcs_get_default(), c);
}

bool is_mark(char32_t c) {
    const auto category = general_category(c);
    return category == HB_UNICODE_GENERAL_CATEGORY_NON_SPACING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_SPACING_MARK ||
           category == HB_UNICODE_GENERAL_CATEGORY_ENCLOSING_MARK;
}

bool is_letter(char32_t c) {
    const auto category = general_category(c);
    return (category >= HB_UNICODE_GENERAL_CATEGORY_LOWERCASE_LETTER &&
            category <= HB_UNICODE_GENERAL_CATEGORY_UPPERCASE_LETTER) ||
           is_ignorable(c);
}

bool is_ignorable(char32_t c) { return is_in(kIgnorable, c); }

bool continues(char32_t previous, char32_t c) {
    if (previous == kZeroWidthJoiner || is_virama(previous)) return is_mark(c) || is_letter(c) || c >= 0x2190;
    return c >= 0x300 && (is_mark(c) || c == kZeroWidthJoiner || is_emoji_modifier(c));
}

std::optional<char32_t> composed(char32_t previous, char32_t c) {
    hb_codepoint_t both = 0;
    if (!needs_shaping(c) || !hb_unicode_compose(hb_unicode_funcs_get_default(), previous, c, &both))
        return {};
    return both;
}

VerticalForm vertical_form(char32_t c) {
    if (is_in(kTurned, c)) return VerticalForm::turned;
    return is_in(kRaised, c) ? VerticalForm::raised : VerticalForm::upright;
}

bool is_bracket(char32_t c) {
    const auto category = general_category(c);
    return category == HB_UNICODE_GENERAL_CATEGORY_OPEN_PUNCTUATION ||
           category == HB_UNICODE_GENERAL_CATEGORY_CLOSE_PUNCTUATION;
}

} // namespace qm
