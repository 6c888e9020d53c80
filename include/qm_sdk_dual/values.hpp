// What is said to controllers and by them, in plain types. Lengths are pixels; a colour is a palette index
// (eRed) below 8 and 0xRRGGBB otherwise; "raw" marks numbers of the controller's own.
#pragma once

#include "../qm_sdk_dual.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace qm {

struct Size {
    unsigned width = 0, height = 0;
};

struct Rect {
    std::uint16_t x = 0, y = 0, width = 0, height = 0; // from the top left corner of the screen
};

// What a type of controllers is.
struct ControllerType {
    std::uint16_t code = 0;  // series in the low byte, variant in the high byte
    std::string model{};     // "G6-T0"; empty when the series is not known
    unsigned generation = 0; // 5, 6, or 0 for neither
    bool full_color = false; // its pixels are full-colour ones and nothing else

    [[nodiscard]] static ControllerType of(std::uint16_t code) {
        QM_ControllerType told{};
        qm_controller_type(code, &told);
        return {code, told.model, told.generation, told.transferMode == 3 || told.transferMode == 5};
    }
};

// How a page appears.
struct Effect {
    std::uint8_t mode = 1;               // 1 static, 4 runs to the left, 38 and 40 to the right
    std::uint8_t speed = 32;             // raw
    std::optional<std::uint16_t> stay{}; // of a page, raw; else 300, and 0 for running text
    std::uint8_t repeat = 1;

    [[nodiscard]] bool running() const { return mode == 4 || mode == 38 || mode == 40; }
    [[nodiscard]] std::uint16_t stay_time() const { return stay.value_or(running() ? 0 : 300); }
};

inline constexpr std::uint16_t kLargestSize = 1000; // points

enum class Align : std::uint8_t { start, center, end }; // left or top, centre, right or bottom

struct TextStyle {
    std::string font = "auto"; // a family, a font file (qm_is_font_file), or the best that is installed
    std::optional<std::uint16_t> size{}; // points, 12 being 16 pixels; else font_size
    std::uint32_t color = eRed;
    std::optional<bool> one_line{}; // cut into pages, not wrapped into lines; else when the text runs
    bool bold = false, italic = false, vertical = false;
    std::uint16_t spacing = 0; // added between characters
    Align halign = Align::center, valign = Align::center;
};

// What a text takes in an area, and what it is drawn in.
struct TextExtent {
    unsigned points = 0;                 // of its size
    std::uint32_t pages = 0;             // how many it makes
    std::uint32_t width = 0, height = 0; // of the ink, pixels: of the strip when it runs, else of a page
    std::uint32_t missing = 0;           // characters that no font has
    char32_t first_missing = 0;          // the first of them
    unsigned strike = 0;                 // pixels of the font's bitmaps; 0 for outlines
    std::string family{}, file{};        // of the font that draws most of it
};

// A text to be spoken. Numbers are raw.
struct Speech {
    std::string text{}; // 1 to 65,515 bytes
    std::uint8_t voice = 0, volume = 10, speed = 5, encoding = 0;
    std::uint32_t repeat = 0, delay = 0; // repetitions, and the pause between them
    std::uint8_t digits = 0, language = 0, word_style = 0;
};

// An entry of a controller's list of voices.
struct VoiceEntry {
    std::uint8_t id = 0;
    Speech speech{};
};

// An area that is shown at once, over the programs: a text, or a picture.
struct Area {
    std::uint8_t id = 0;        // replaces the area of that number
    std::optional<Rect> rect{}; // else the whole screen
    std::string text{};
    TextStyle style{};
    Effect effect{};
    std::string picture{};          // path of a PNG file, which goes before a text
    std::optional<Speech> speech{}; // generation 6
};

struct Date {
    unsigned year = 0, month = 0, day = 0;
};

[[nodiscard]] constexpr bool is_day(const Date& date) {
    constexpr unsigned days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (date.month < 1 || date.month > 12 || date.year > 9999) return false;
    const bool leap = date.year % 4 == 0 && (date.year % 100 != 0 || date.year % 400 == 0);
    return date.day >= 1 && date.day <= days[date.month - 1] + (leap && date.month == 2);
}

struct Time {
    Date date{};
    unsigned hour = 0, minute = 0, second = 0;
};

[[nodiscard]] constexpr bool is_time(const Time& time) {
    return is_day(time.date) && time.hour < 24 && time.minute < 60 && time.second < 60;
}

// A number as controllers keep days and times: 2024 as 0x2024.
[[nodiscard]] constexpr unsigned to_bcd(unsigned value) {
    return value < 10 ? value : to_bcd(value / 10) << 4U | value % 10;
}
// Nothing for what has other digits than 0 to 9.
[[nodiscard]] constexpr std::optional<unsigned> from_bcd(unsigned bcd) {
    if (bcd == 0) return 0;
    const auto high = from_bcd(bcd >> 4U);
    return !high || (bcd & 0xFU) > 9 ? std::nullopt : std::optional(*high * 10 + (bcd & 0xFU));
}

// Nothing when the fields, all in BCD, are no time.
[[nodiscard]] inline std::optional<Time> time_from_bcd(unsigned year, unsigned month, unsigned day,
                                                       unsigned hour, unsigned minute, unsigned second) {
    std::array<unsigned, 6> fields{year, month, day, hour, minute, second};
    for (unsigned& field : fields) {
        const auto plain = from_bcd(field);
        if (!plain) return std::nullopt;
        field = *plain;
    }
    const Time time{{fields[0], fields[1], fields[2]}, fields[3], fields[4], fields[5]};
    return is_time(time) ? std::optional(time) : std::nullopt;
}

// What a controller says of itself when it is asked who it is.
struct Identity {
    ControllerType type{};
    std::string firmware{};
    Size screen{};                       // 0 x 0 when it is not configured
    unsigned color = 0;                  // E_ScreenColor_G56
    unsigned brightness = 0, power = 0;  // raw; 0 off, 1 on
    unsigned address = 0, baud_rate = 0; // of the screen; raw
    std::string ip{};                    // where it was found, by a search
};

// What pixels are made for.
struct Screen {
    unsigned generation = 6;     // of the controller
    std::uint16_t type = 0x0262; // of the controller
    E_ScreenColor_G56 color = SCREEN_COLOR_DOUBLE;
    E_DoubleColorPixel_G56 wiring = DOUBLE_COLOR_PIXTYPE_1;
    Size size{};
    bool told = false; // by the controller, which is not asked again

    // Of a controller that has answered; two colours when it does not say.
    [[nodiscard]] static Screen of(const Identity& identity) {
        Screen screen;
        screen.generation = identity.type.generation;
        screen.type = identity.type.code;
        if (identity.color >= SCREEN_COLOR_SINGLE && identity.color <= SCREEN_COLOR_FULLCOLOR)
            screen.color = static_cast<E_ScreenColor_G56>(identity.color);
        screen.size = identity.screen;
        screen.told = true;
        return screen;
    }
};

// What a controller is doing.
struct ControllerStatus {
    unsigned power = 0, timer = 0;                              // 0 off, 1 on
    unsigned brightness_mode = 0, brightness = 0;               // 0 manual, 1 by clock, 2 by sensor; raw
    int programs = 0;                                           // how many it has
    std::string program{};                                      // name of the one that is shown
    unsigned screen_lock = 0, program_lock = 0;                 // 1 locked
    unsigned running_mode = 0, clock_status = 0;                // raw
    std::optional<Time> clock{};                                // nothing when it shows no time
    std::array<std::uint8_t, 3> temperature1{}, temperature2{}; // raw
    int humidity = 0, noise = 0;                                // raw
    unsigned switch_status = 0;                                 // raw
    std::string custom_id, bar_code;
};

// One of a controller's files.
struct FileEntry {
    std::string name{};                   // 4 characters
    unsigned type = 0;                    // 0 program, 9 its data, 1 configuration
    std::uint32_t size = 0, checksum = 0; // bytes; the controller's, CRC-32 of programs
};

// A file to be written.
struct File {
    std::string name{}; // 4 characters
    std::uint8_t type = 0;
    std::vector<std::uint8_t> bytes{};
};

struct Volume {
    std::uint32_t total = 0, available = 0; // bytes
};

// When the screen is on: from switching on until switching off; may run past midnight.
struct OnPeriod {
    std::uint8_t on_hour = 0, on_minute = 0, off_hour = 0, off_minute = 0;
};

} // namespace qm
