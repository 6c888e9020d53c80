#include "program/TimeFormat.h"

#include <iterator>
#include <string_view>

namespace qm {
namespace {

// The letters of formats, in the order of TimeUnit: I is the hour of 12, N the minute, P AM or PM. The rest
// of a format stays as it is.
constexpr std::u16string_view kUnits = u"YyMDHINSP";
constexpr std::u16string_view kDates[] = {u"Y-M-D", u"Y/M/D", u"D-M-Y",  u"D/M/Y",
                                          u"M-D",   u"M/D",   u"M月D日", u"Y年M月D日"};
constexpr std::u16string_view kTimes[] = {u"H:N:S", u"H时N分S秒", u"H:N", u"H时N分", u"P I:N", u"I:N P"};
constexpr std::u16string_view kMinutes[] = {u"H:N", u"H时N分", u"H:N", u"H时N分", u"I:N", u"I:N"};
constexpr std::u16string_view kHours[] = {u"H", u"H", u"H", u"H", u"I", u"I"};

constexpr std::u16string_view kEnglish[] = {u"Sunday",   u"Monday", u"Tuesday", u"Wednesday",
                                            u"Thursday", u"Friday", u"Saturday"};
constexpr std::u16string_view kChinese[] = {u"星期日", u"星期一", u"星期二", u"星期三",
                                            u"星期四", u"星期五", u"星期六"};
constexpr std::size_t kShortName = 3;

TimePiece piece_of(char16_t c) {
    const std::size_t unit = kUnits.find(c);
    if (unit == kUnits.npos) return {TimeUnit::literal, c};
    return {static_cast<TimeUnit>(unit)};
}

template <std::size_t N> TimePieces pieces_of(const std::u16string_view (&formats)[N], Ouint32 style) {
    TimePieces pieces;
    if (style < N)
        for (const char16_t c : formats[style]) pieces.push_back(piece_of(c));
    return pieces;
}

std::vector<std::u16string> names_of_days(Ouint32 style) {
    std::vector<std::u16string> names;
    for (const auto name : style == Monday_CHS ? kChinese : kEnglish)
        names.emplace_back(style == Mon ? name.substr(0, kShortName) : name);
    return names;
}

std::vector<std::u16string> digits() {
    std::vector<std::u16string> all;
    for (char16_t digit = u'0'; digit <= u'9'; ++digit) all.emplace_back(1, digit);
    return all;
}

} // namespace

TimePieces date_pieces(Ouint32 style) { return pieces_of(kDates, style); }

TimePieces time_pieces(Ouint32 style) { return pieces_of(kTimes, style); }

TimePieces minute_pieces(Ouint32 timeStyle) { return pieces_of(kMinutes, timeStyle); }

TimePieces hour_pieces(Ouint32 timeStyle) { return pieces_of(kHours, timeStyle); }

TimePieces week_pieces(Ouint32 style) {
    if (style < Monday || style > Monday_CHS) return {};
    return {{TimeUnit::weekday}};
}

std::vector<TimePieces> parts_of(const TimePieces& pieces) {
    std::vector<TimePieces> parts;
    bool ended = true;
    for (const TimePiece& piece : pieces) {
        const bool space = piece == TimePiece{TimeUnit::literal, u' '};
        if (ended) parts.emplace_back();
        if (!space) parts.back().push_back(piece);
        ended = piece.unit == TimeUnit::literal;
    }
    return parts;
}

std::vector<std::u16string> texts_of(const TimePiece& piece, Ouint32 weekStyle) {
    switch (piece.unit) {
    case TimeUnit::literal:
        return {std::u16string(1, piece.character)};
    case TimeUnit::weekday:
        return names_of_days(weekStyle);
    case TimeUnit::amPm:
        return {u"AM", u"PM"};
    default:
        return digits();
    }
}

} // namespace qm
