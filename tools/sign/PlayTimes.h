// When a program is played.
#pragma once

#include "JsonReader.h"
#include "values.h"

namespace qm::sign {

// Days, dates and times, as far as they are said.
struct PlayTimes {
    std::optional<std::uint8_t> week;
    std::optional<std::array<Date, 2>> life_span;
    std::vector<PlayRules::Period> periods; // empty: not said

    void replace(PlayRules& rules) const;
};

// Asks the object for week, life_span and play_periods. Throws JsonError.
[[nodiscard]] PlayTimes read_play_times(Object& object);

} // namespace qm::sign
