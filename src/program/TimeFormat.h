// The fixed formats in which a digital clock shows date, day of the week and time.
#pragma once

#include "qm_sdk_dual.h"

#include <string>
#include <vector>

namespace qm {

// What a controller fills in, as area records number it.
enum class TimeUnit : Ouint8 {
    year,
    twoDigitYear,
    month,
    day,
    hour24,
    hour12,
    minute,
    second,
    amPm,
    weekday,
    literal, // a character that stays
};

// Digits of a unit that is a number, else 0.
[[nodiscard]] constexpr int digits_of(TimeUnit unit) {
    if (unit == TimeUnit::year) return 4;
    return unit < TimeUnit::amPm ? 2 : 0;
}

struct TimePiece {
    TimeUnit unit;
    char16_t character = 0; // of a literal
    bool operator==(const TimePiece&) const = default;
};
using TimePieces = std::vector<TimePiece>;

// The pieces of a format; none for one that does not exist.
[[nodiscard]] TimePieces date_pieces(Ouint32 style);
[[nodiscard]] TimePieces time_pieces(Ouint32 style);
[[nodiscard]] TimePieces week_pieces(Ouint32 style);
// What a format of the time has of hour and minute, and of the hour.
[[nodiscard]] TimePieces minute_pieces(Ouint32 timeStyle);
[[nodiscard]] TimePieces hour_pieces(Ouint32 timeStyle);

// The parts of a format as they may stand on lines of their own, each ending in its separator.
[[nodiscard]] std::vector<TimePieces> parts_of(const TimePieces& pieces);

// Everything that can stand in a piece's place: digits from 0, names of days from Sunday, AM and PM, or the
// character.
[[nodiscard]] std::vector<std::u16string> texts_of(const TimePiece& piece, Ouint32 weekStyle);

} // namespace qm
