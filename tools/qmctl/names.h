// Words for the codes that controllers and the library speak in.
#pragma once

#include "qm_sdk_dual.h"

#include <span>
#include <string>

namespace qm::ctl {

struct Name {
    const char* word;
    unsigned code;
};
using Names = std::span<const Name>;

inline constexpr Name kScreenColors[] = {{"single", SCREEN_COLOR_SINGLE},
                                         {"double", SCREEN_COLOR_DOUBLE},
                                         {"three", SCREEN_COLOR_THREE},
                                         {"full", SCREEN_COLOR_FULLCOLOR}};

inline constexpr Name kOffOn[] = {{"off", 0}, {"on", 1}};

// The word for code, or "unknown (9)".
[[nodiscard]] std::string word_for(Names names, unsigned code);
// "G6-T0 (0x62)", by the low byte of a controller type.
[[nodiscard]] std::string model_name(Ouint16 controllerType);
// Of the protocol that a controller of that type speaks: 5, 6, or 0 for a type that is not known.
[[nodiscard]] unsigned generation_of(Ouint16 controllerType);
[[nodiscard]] std::string status_meaning(int status);

} // namespace qm::ctl
