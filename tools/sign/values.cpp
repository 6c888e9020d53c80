#include "values.h"

#include "files.h"

#include <fribidi.h>

#include <filesystem>
#include <fstream>

namespace qm::sign {
namespace {

constexpr Name kPalette[] = {{"black", eBlack}, {"red", eRed},         {"green", eGreen}, {"yellow", eYellow},
                             {"blue", eBlue},   {"magenta", eMagenta}, {"cyan", eCyan},   {"white", eWhite}};

void require_readable_file(const std::string& path) {
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error) || !std::ifstream(path))
        expected("a file that can be read");
}

// TrueType and OpenType, collections, and bitmap fonts as text, compiled and compressed.
bool starts_as_font(const std::string& path) {
    constexpr std::string_view signatures[] = {
        std::string_view("\0\1\0\0", 4), "OTTO", "true", "ttcf", "STARTFONT", "\1fcp", "\x1F\x8B"};
    std::array<char, 9> start{};
    std::ifstream(path, std::ios::binary).read(start.data(), start.size());
    return std::ranges::any_of(signatures, [&](std::string_view signature) {
        return std::string_view(start.data(), start.size()).starts_with(signature);
    });
}

bool is_read_from_the_right(const std::string& text) {
    const std::string padded = text + std::string(4, '\0'); // a character cut short is read past its end
    std::vector<FriBidiChar> characters(padded.size());
    const FriBidiStrIndex count = fribidi_charset_to_unicode(
        FRIBIDI_CHAR_SET_UTF8, padded.data(), static_cast<FriBidiStrIndex>(text.size()), characters.data());
    std::vector<FriBidiCharType> types(characters.size());
    fribidi_get_bidi_types(characters.data(), count, types.data());
    return fribidi_get_par_direction(types.data(), count) == FRIBIDI_PAR_RTL;
}

std::optional<unsigned> digits(std::string_view text, std::size_t count, unsigned max) {
    return text.size() == count ? to_number(text, 0, max) : std::nullopt;
}

} // namespace

std::optional<std::array<Ouint8, 3>> to_time(std::string_view text) {
    const auto pieces = split(text, ':');
    if (pieces.size() < 2 || pieces.size() > 3) return std::nullopt;
    std::array<Ouint8, 3> time{};
    for (std::size_t i = 0; i < pieces.size(); ++i) {
        const auto value = digits(pieces[i], 2, i == 0 ? 23 : 59);
        if (!value) return std::nullopt;
        time[i] = static_cast<Ouint8>(*value);
    }
    return time;
}

unsigned read_mode(const std::string& text) { return read_word_or_number(text, kModes, 255); }

std::uint8_t mode_for(const std::string& text, unsigned mode) {
    if (mode == kRun) mode = is_read_from_the_right(text) ? 38 : 4;
    return static_cast<std::uint8_t>(mode);
}

Align read_align(const std::string& text, Names names) { return static_cast<Align>(read_word(text, names)); }

std::uint32_t read_color(const std::string& text) {
    if (const auto code = to_code(kPalette, text)) return *code;
    const auto rgb = text.size() == 7 && text[0] == '#'
                         ? to_number(std::string_view(text).substr(1), 0, 0xFFFFFF, 16)
                         : std::nullopt;
    if (!rgb) expected("one of " + list(kPalette) + ", or #RRGGBB");
    // Values below 8 are the palette's: the darkest blues become the darkest that can be said, black stays.
    return *rgb == 0 ? eBlack : std::max(*rgb, 8U);
}

std::string read_font(const std::string& text) {
    if (qm_is_font_file(text.c_str())) {
        require_readable_file(text);
        if (!starts_as_font(text)) expected("a font file");
    } else if (text.empty() || text.find('/') != std::string::npos) {
        expected(
            "a font family such as \"DejaVu Sans\", or a .ttf, .ttc, .otf, .otb, .pcf, .pcf.gz or .bdf file");
    }
    return text;
}

std::string read_path(const std::string& text) {
    require_readable_file(text);
    return text;
}

std::string read_png_path(const std::string& text) {
    require_readable_file(text);
    if (!starts_as_png(text)) expected("a PNG picture");
    return text;
}

PlayRules::Period read_period(const std::string& text) {
    const auto pieces = split(text, '-');
    const auto from = pieces.size() == 2 ? to_time(pieces[0]) : std::nullopt;
    const auto to = pieces.size() == 2 ? to_time(pieces[1]) : std::nullopt;
    if (!from || !to) expected("HH:MM-HH:MM or HH:MM:SS-HH:MM:SS, such as 08:00-12:30");
    return {(*from)[0], (*from)[1], (*from)[2], (*to)[0], (*to)[1], (*to)[2]};
}

Date read_date(const std::string& text) {
    const auto pieces = split(text, '-');
    const bool three = pieces.size() == 3;
    const auto year = three ? digits(pieces[0], 4, 9999) : std::nullopt;
    const auto month = three ? digits(pieces[1], 2, 12) : std::nullopt;
    const auto day = three ? digits(pieces[2], 2, 31) : std::nullopt;
    if (!year || !month || !day || !is_day({*year, *month, *day})) expected("a date such as 2024-12-31");
    return {*year, *month, *day};
}

Time read_moment(const std::string& text) {
    const auto space = text.find(' ');
    if (space == std::string::npos) expected("a moment such as 2024-12-31 23:59:59");
    const Date date = read_date(text.substr(0, space));
    const auto time = to_time(std::string_view(text).substr(space + 1));
    if (!time) expected("a time of day such as 23:59:59");
    return {date, (*time)[0], (*time)[1], (*time)[2]};
}

std::string to_string(const Size& size) {
    return std::to_string(size.width) + " x " + std::to_string(size.height);
}

std::string beyond(const Rect& rect, const Size& screen) {
    if (unsigned{rect.x} + rect.width <= screen.width && unsigned{rect.y} + rect.height <= screen.height)
        return "";
    return "reaches beyond the screen of " + to_string(screen) + " pixels";
}

} // namespace qm::sign
