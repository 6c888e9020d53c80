// Words for codes.
#pragma once

#include "qm_sdk_dual.h"

#include <span>
#include <string>

namespace qm::sign {

struct Name {
    const char* word;
    unsigned code;
};
using Names = std::span<const Name>;

inline constexpr Name kScreenColors[] = {{"single", SCREEN_COLOR_SINGLE},
                                         {"double", SCREEN_COLOR_DOUBLE},
                                         {"three", SCREEN_COLOR_THREE},
                                         {"full", SCREEN_COLOR_FULLCOLOR}};
inline constexpr Name kModes[] = {{"static", 1}, {"left", 4}, {"right", 38}};
inline constexpr Name kHorizontal[] = {{"left", 0}, {"center", 1}, {"right", 2}};
inline constexpr Name kVertical[] = {{"top", 0}, {"center", 1}, {"bottom", 2}};

// The word for code, or "unknown (9)".
[[nodiscard]] std::string word_for(Names names, unsigned code);
[[nodiscard]] std::string status_meaning(int status);

} // namespace qm::sign
