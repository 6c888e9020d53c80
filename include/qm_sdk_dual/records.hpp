// Between the values of this interface and the packed records of the C interface.
#pragma once

#include "values.hpp"

#include <algorithm>
#include <numeric>
#include <type_traits>

namespace qm::detail {

inline std::uint8_t u8(unsigned value) { return static_cast<std::uint8_t>(value); }
inline std::uint16_t u16(unsigned value) { return static_cast<std::uint16_t>(value); }
inline const Ouint8* bytes_of(const std::string& text) {
    return reinterpret_cast<const Ouint8*>(text.c_str());
}

// Whether a field of that type holds a number; what is no number is the compiler's to check.
template <class Field, class Value> constexpr bool fits(const Value& value) {
    if constexpr (std::is_integral_v<Field> && std::is_integral_v<Value>)
        return static_cast<Value>(static_cast<Field>(value)) == value &&
               (value < Value{}) == (static_cast<Field>(value) < Field{});
    else
        return true;
}

// A text field of a record, which ends at its first zero or fills it.
template <class Byte, std::size_t size> std::string text_of(const Byte (&field)[size]) {
    static_assert(sizeof(Byte) == 1);
    const auto* first = reinterpret_cast<const char*>(field);
    return {first, std::find(first, first + size, '\0')};
}

// ---- Text that fits its area

inline constexpr unsigned kSmallestFitting = 6; // points

// How many characters each line has. Lines are the library's: CR, LF or CR LF ends one, and behind one that
// closes the text there is none.
inline std::vector<unsigned> line_lengths(const std::string& text) {
    std::vector<unsigned> lengths{0};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool last = i + 1 == text.size();
        if (text[i] == '\n' || (text[i] == '\r' && !last && text[i + 1] != '\n')) {
            if (!last) lengths.push_back(0);
        } else if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80 && text[i] != '\r') {
            ++lengths.back();
        }
    }
    return lengths;
}

constexpr unsigned rounded_up(unsigned a, unsigned b) { return (a + b - 1) / b; }
// Width of a full-width character for a size in points.
constexpr unsigned em_width(unsigned points) { return (points * 4 + 1) / 3; }
// Ascent and descent as in most fonts, each rounded up.
constexpr unsigned line_height(unsigned points) {
    const unsigned em = em_width(points);
    return rounded_up(15 * em, 16) + rounded_up(15 * em, 64);
}

// Columns of stacked characters for lines of so many characters, broken where a column is full.
inline unsigned columns_of(const std::vector<unsigned>& lengths, unsigned spacing, unsigned height,
                           unsigned points) {
    const unsigned longest = std::max(1U, (height + spacing) / (line_height(points) + spacing));
    unsigned columns = 0;
    for (const unsigned length : lengths) columns += std::max(1U, rounded_up(length, longest));
    return columns;
}

// In points: the largest with which the given lines fit the height, or the whole text when it is vertical.
inline unsigned fitting_size(const TextStyle& style, const std::string& text, const Rect& rect,
                             bool running) {
    const bool single = style.one_line.value_or(running);
    std::vector<unsigned> lengths = line_lengths(text);
    if (single) { // its line ends become spaces; when it runs, it is as long as it likes
        const auto spaces = static_cast<unsigned>(lengths.size()) - 1;
        lengths = {running ? 1 : std::accumulate(lengths.begin(), lengths.end(), spaces)};
    }
    const auto fits = [&](unsigned points) {
        if (!style.vertical) return line_height(points) * lengths.size() <= rect.height;
        const unsigned columns = columns_of(lengths, style.spacing, rect.height, points);
        return line_height(points) <= rect.height && columns * em_width(points) <= rect.width &&
               (columns == 1 || !single);
    };
    unsigned points = kSmallestFitting;
    while (points < kLargestSize && fits(points + 1)) ++points;
    return points;
}

} // namespace qm::detail

namespace qm {

// Points in which a text is drawn in an area.
[[nodiscard]] inline unsigned font_size(const TextStyle& style, const std::string& text, const Rect& area,
                                        const Effect& effect) {
    return style.size ? *style.size : detail::fitting_size(style, text, area, effect.running());
}

} // namespace qm

namespace qm::detail {

// ---- Pages, borders and speech

template <class Page> Page page_of(const Effect& effect) {
    Page page{};
    page.DisplayMode = effect.mode;
    page.Speed = effect.speed;
    page.StayTime = effect.stay_time();
    page.RepeatTime = effect.repeat;
    return page;
}

// The page of a text in rect.
template <class Page>
Page page_of(const Effect& effect, const TextStyle& style, const std::string& text, const Rect& rect) {
    Page page = page_of<Page>(effect);
    page.ValidLen = rect.width;
    page.arrMode = style.one_line.value_or(effect.running()) ? SINGLELINE : MULTILINE;
    page.fontSize = u16(font_size(style, text, rect, effect));
    page.color = style.color;
    page.fontBold = style.bold;
    page.fontItalic = style.italic;
    page.tdirection = style.vertical ? eVertical : eHorizontal;
    page.txtSpace = style.spacing;
    page.Halign = static_cast<Ouint8>(style.halign);
    page.Valign = static_cast<Ouint8>(style.valign);
    return page;
}

// What the records of speech have in common, signed or not.
template <class Record> Record voice_of(const Speech& speech) {
    Record record{};
    record.SoundPerson = static_cast<decltype(record.SoundPerson)>(speech.voice);
    record.SoundVolum = static_cast<decltype(record.SoundVolum)>(speech.volume);
    record.SoundSpeed = static_cast<decltype(record.SoundSpeed)>(speech.speed);
    record.SoundDataMode = static_cast<decltype(record.SoundDataMode)>(speech.encoding);
    record.SoundReplayTimes = static_cast<decltype(record.SoundReplayTimes)>(speech.repeat);
    record.SoundReplayDelay = static_cast<decltype(record.SoundReplayDelay)>(speech.delay);
    record.Soundnumdeal = static_cast<decltype(record.Soundnumdeal)>(speech.digits);
    record.Soundlanguages = static_cast<decltype(record.Soundlanguages)>(speech.language);
    record.Soundwordstyle = static_cast<decltype(record.Soundwordstyle)>(speech.word_style);
    return record;
}

// Points to the text, which has to live as long.
inline HVSound_6G sound_of(const Speech& speech) {
    auto record = voice_of<HVSound_6G>(speech);
    record.SoundFlag = 1;
    record.SoundDataLen = static_cast<Ouint32>(speech.text.size());
    record.SoundData = bytes_of(speech.text);
    return record;
}

// ---- What controllers say

inline Identity identity_of(const Ping_data& ping) {
    Identity identity;
    identity.type = ControllerType::of(ping.ControllerType);
    identity.firmware = text_of(ping.FirmwareVersion);
    identity.screen = {ping.ScreenWidth, ping.ScreenHeight};
    identity.color = ping.Color;
    identity.brightness = ping.CurrentBrigtness;
    identity.power = ping.CurrentOnOffStatus;
    identity.address = ping.uAddress;
    identity.baud_rate = ping.Baudrate;
    identity.ip = text_of(ping.ipAdder);
    return identity;
}

inline ControllerStatus status_of(const ControllerStatus_G56& record) {
    ControllerStatus status;
    status.power = record.onoffStatus;
    status.timer = record.timingOnOff;
    status.brightness_mode = record.brightnessAdjMode;
    status.brightness = record.brightness;
    status.programs = record.programeNumber;
    status.program = text_of(record.currentProgram);
    status.screen_lock = record.screenLockStatus;
    status.program_lock = record.programLockStatus;
    status.running_mode = record.runningMode;
    status.clock_status = record.RTCStatus;
    status.clock = time_from_bcd(u16(static_cast<unsigned>(record.RTCYear)), record.RTCMonth, record.RTCDate,
                                 record.RTCHour, record.RTCMinute, record.RTCSecond);
    std::copy_n(record.temperature1, 3, status.temperature1.begin());
    std::copy_n(record.temperature2, 3, status.temperature2.begin());
    status.humidity = record.humidity;
    status.noise = record.noise;
    status.switch_status = record.switchStatus;
    status.custom_id = text_of(record.CustomID);
    status.bar_code = text_of(record.BarCode);
    return status;
}

} // namespace qm::detail
