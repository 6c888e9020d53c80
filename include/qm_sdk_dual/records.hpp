// Between the values of this interface and the packed records of the C interface.
#pragma once

#include "result.hpp"
#include "values.hpp"

#include <algorithm>
#include <optional>
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

inline bool is_single_line(const TextStyle& style, const Effect& effect) {
    return style.one_line.value_or(effect.running());
}

// What a text takes in an area at a size; nothing when it cannot be told.
inline std::optional<qm_text_extent> extent_of(const TextStyle& style, const std::string& text,
                                               const Rect& area, const Effect& effect, unsigned points) {
    qm_text_style record{};
    record.font = style.font.c_str();
    record.points = u16(points);
    record.bold = style.bold;
    record.italic = style.italic;
    record.arrMode = is_single_line(style, effect) ? SINGLELINE : MULTILINE;
    record.direction = style.vertical ? eVertical : eHorizontal;
    record.spacing = style.spacing;
    record.displayMode = effect.mode;
    qm_text_extent extent{};
    if (qm_measure_text(text.c_str(), &record, area.width, area.height, &extent) != QM_OK)
        return std::nullopt;
    return extent;
}

// The words of a text, a line each: what a line end must not come into. Scripts that put no spaces between
// words have line ends anywhere, and are left out.
inline std::string words_of(const std::string& text) {
    std::string words;
    for (std::size_t i = 0; i < text.size();) {
        const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(text[at]); };
        const std::size_t length = byte(i) < 0xC0 ? 1 : byte(i) < 0xE0 ? 2 : byte(i) < 0xF0 ? 3 : 4;
        // Three bytes: from U+0E00 on Thai and its neighbours, from U+1780 on Khmer, from U+2E80 on hanzi.
        const bool unspaced = length == 4 || byte(i) >= 0xE3 ||
                              (length == 3 && i + 1 < text.size() &&
                               ((byte(i) == 0xE0 && byte(i + 1) >= 0xB8) ||
                                (byte(i) == 0xE1 && byte(i + 1) >= 0x80 && byte(i + 1) < 0xA0) ||
                                (byte(i) == 0xE2 && byte(i + 1) >= 0xBA)));
        if (unspaced || byte(i) <= ' ')
            words += '\n';
        else
            words.append(text, i, length);
        if (text[i] == '-') words += '\n';
        i += length;
    }
    return words;
}

// The largest size of which all ink is in the area, with no word broken.
inline unsigned fitting_size(const TextStyle& style, const std::string& text, const Rect& area,
                             const Effect& effect) {
    const bool wrapped = !style.vertical && !is_single_line(style, effect);
    const bool runs = effect.running() && is_single_line(style, effect) && !style.vertical;
    const std::string words = wrapped ? words_of(text) : "";
    Rect column = area, room = area; // as wide as the area, and as wide as any word
    column.height = room.height = room.width = 0xFFFF;
    const auto fits = [&](unsigned points) {
        const auto extent = extent_of(style, text, area, effect, points);
        if (!extent || extent->height > area.height) return false;
        if (runs) return true;
        if (extent->pages > 1 || extent->width > area.width) return false;
        if (!wrapped) return true;
        const auto narrow = extent_of(style, words, column, Effect{}, points);
        const auto whole = extent_of(style, words, room, Effect{}, points);
        return narrow && whole && narrow->pages == whole->pages && narrow->height == whole->height;
    };
    unsigned least = kSmallestFitting, most = std::min<unsigned>(kLargestSize, 2U * area.height + least);
    while (least < most) { // least fits, or is the smallest
        const unsigned middle = (least + most + 1) / 2;
        if (fits(middle))
            least = middle;
        else
            most = middle - 1;
    }
    for (unsigned larger = least + 3; larger > least; --larger) // a hinted font is not always larger then
        if (fits(larger)) return larger;
    return least;
}

} // namespace qm::detail

namespace qm {

// Points in which a text is drawn in an area: as the style says, or the largest of which all ink is in the
// area with no word broken, at least 6. What does not fit then goes to further pages.
[[nodiscard]] inline unsigned font_size(const TextStyle& style, const std::string& text, const Rect& area,
                                        const Effect& effect) {
    return style.size ? *style.size : detail::fitting_size(style, text, area, effect);
}

// What becomes of a text in an area.
[[nodiscard]] inline Result<TextExtent> measure(const std::string& text, const TextStyle& style,
                                                const Rect& area, const Effect& effect = {}) {
    const unsigned points = font_size(style, text, area, effect);
    const auto told = detail::extent_of(style, text, area, effect, points);
    if (!told) return Error::last(QM_FAILED);
    return TextExtent{points,       told->pages,   told->width,
                      told->height, told->missing, static_cast<char32_t>(told->firstMissing),
                      told->strike, told->family,  told->file};
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
    page.arrMode = is_single_line(style, effect) ? SINGLELINE : MULTILINE;
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
