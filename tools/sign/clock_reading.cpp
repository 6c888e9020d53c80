#include "clock_reading.h"

namespace qm::sign {
namespace {

constexpr unsigned kWord = 0xFFFF;

constexpr Name kDates[] = {{"2024-12-31", YYYY_MM_DD_MINUS}, {"2024/12/31", YYYY_MM_DD_VIRGURE},
                           {"31-12-2024", DD_MM_YYYY_MINUS}, {"31/12/2024", DD_MM_YYYY_VIRGURE},
                           {"12-31", MM_DD_MINUS},           {"12/31", MM_DD_VIRGURE},
                           {"12月31日", MM_DD_CHS},          {"2024年12月31日", YYYY_MM_DD_CHS}};
constexpr Name kWeeks[] = {{"Monday", Monday}, {"Mon", Mon}, {"星期一", Monday_CHS}};
constexpr Name kTimes[] = {{"23:59:59", HH_MM_SS_COLON}, {"23时59分59秒", HH_MM_SS_CHS},
                           {"23:59", HH_MM_COLON},       {"23时59分", HH_MM_CHS},
                           {"PM 11:59", AM_HH_MM},       {"11:59 PM", HH_MM_AM}};
constexpr Name kMarks[] = {{"lines", eLINE}, {"squares", eSQUARE}, {"discs", eCIRCLE}};

auto word_of(Names names) {
    return [names](const std::string& text) { return read_word(text, names); };
}

void take_hand(Object& clock, const std::string& name, ClockHand& hand, std::string& where) {
    const auto field = clock.find(name);
    if (!field) return;
    where = field->path();
    read_object(*field, [&](Object& object) {
        object.take_number("width", hand.width);
        object.take_number("length", hand.length);
        object.take_text("color", hand.color, read_color);
    });
}

} // namespace

DigitalClock read_digital(const Field& field) {
    DigitalClock clock;
    read_object(field, [&](Object& object) {
        object.take_text("date", clock.date, word_of(kDates));
        object.take_text("week", clock.week, word_of(kWeeks));
        object.take_text("time", clock.time, word_of(kTimes));
        object.take("underline", clock.underline, &Field::flag);
    });
    if (!clock.date && !clock.week && !clock.time) field.refuse("needs date, week or time");
    return clock;
}

ClockFace read_analog(const Field& field, const std::function<PictureFile(const Field&)>& read_picture) {
    ClockFace clock;
    read_object(field, [&](Object& object) {
        object.take("pivot", clock.pivot, [](const Field& pivot) {
            const auto values = pivot.list(2, 2);
            const auto u16 = [&](std::size_t i) {
                return static_cast<std::uint16_t>(values[i].number(0, kWord));
            };
            return std::array{u16(0), u16(1)};
        });
        object.take_text("marks", clock.marks, word_of(kMarks));
        object.take_text("main_color", clock.main_color, read_color);
        object.take_text("mark_color", clock.mark_color, read_color);
        object.take_text("background", clock.background, read_color);
        object.take("picture", clock.dial, read_picture);
        take_hand(object, "hour", clock.hour, clock.hands[0]);
        take_hand(object, "minute", clock.minute, clock.hands[1]);
        take_hand(object, "second", clock.second, clock.hands[2]);
    });
    return clock;
}

void refuse_beside_clock(Object& area, bool digital) {
    constexpr const char* kNever[] = {"text", "texts",  "pictures", "border",  "sound",  "mode", "speed",
                                      "stay", "repeat", "vertical", "spacing", "valign", "fit",  "dither"};
    constexpr const char* kOfText[] = {"font", "size", "color", "bold", "italic", "one_line", "align"};
    const auto refuse = [&area](const char* name) {
        if (const auto field = area.find(name)) field->refuse("does not go with a clock");
    };
    std::for_each(std::begin(kNever), std::end(kNever), refuse);
    if (!digital) std::for_each(std::begin(kOfText), std::end(kOfText), refuse);
}

} // namespace qm::sign
