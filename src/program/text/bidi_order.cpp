#include "program/text/bidi_order.h"

#include <fribidi.h>

#include <algorithm>
#include <new>
#include <numeric>

namespace qm {
namespace {

static_assert(FRIBIDI_BIDI_MAX_EXPLICIT_LEVEL < 0xFF);

// Without one of these everything runs from left to right.
bool may_turn(FriBidiCharType type) {
    return (type & (FRIBIDI_MASK_RTL | FRIBIDI_MASK_ARABIC | FRIBIDI_MASK_EXPLICIT | FRIBIDI_MASK_ISOLATE)) !=
           0;
}

} // namespace

ParagraphLevels embedding_levels(std::u32string_view paragraph) {
    const std::vector<FriBidiChar> characters(paragraph.begin(), paragraph.end());
    const auto count = static_cast<FriBidiStrIndex>(characters.size());
    std::vector<FriBidiCharType> types(characters.size());
    fribidi_get_bidi_types(characters.data(), count, types.data());
    ParagraphLevels result{0, std::vector<Level>(characters.size())};
    if (std::none_of(types.begin(), types.end(), may_turn)) return result;
    std::vector<FriBidiBracketType> brackets(characters.size());
    fribidi_get_bracket_types(characters.data(), count, types.data(), brackets.data());
    std::vector<FriBidiLevel> levels(characters.size());
    FriBidiParType direction = FRIBIDI_PAR_ON;
    if (fribidi_get_par_embedding_levels_ex(types.data(), brackets.data(), count, &direction,
                                            levels.data()) == 0)
        throw std::bad_alloc();
    std::transform(levels.begin(), levels.end(), result.levels.begin(),
                   [](FriBidiLevel level) { return static_cast<Level>(std::max<int>(level, 0)); });
    result.paragraph = FRIBIDI_IS_RTL(direction) ? 1 : 0;
    return result;
}

bool is_bidi_space(char32_t c) {
    const FriBidiCharType type = fribidi_get_bidi_type(c);
    return FRIBIDI_IS_EXPLICIT_OR_SEPARATOR_OR_BN_OR_WS(type) || FRIBIDI_IS_ISOLATE(type);
}

std::vector<Ouint32> visual_order(std::span<const Level> levels) {
    std::vector<Ouint32> order(levels.size());
    std::iota(order.begin(), order.end(), 0U);
    const Level highest = levels.empty() ? Level{} : *std::max_element(levels.begin(), levels.end());
    for (Level level = highest; level > 0; --level) {
        const auto above = [&](Ouint32 number) { return levels[number] >= level; };
        for (auto begin = std::find_if(order.begin(), order.end(), above); begin != order.end();) {
            const auto end = std::find_if_not(begin, order.end(), above);
            std::reverse(begin, end);
            begin = std::find_if(end, order.end(), above);
        }
    }
    return order;
}

} // namespace qm
