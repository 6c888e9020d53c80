#include "arguments.h"

#include <algorithm>
#include <arpa/inet.h>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>

namespace qm::ctl {
namespace {

constexpr Name kPalette[] = {{"black", eBlack}, {"red", eRed},         {"green", eGreen}, {"yellow", eYellow},
                             {"blue", eBlue},   {"magenta", eMagenta}, {"cyan", eCyan},   {"white", eWhite}};
constexpr std::string_view kPngSignature{"\x89PNG\r\n\x1a\n", 8};

std::optional<unsigned> to_code(Names names, std::string_view word) {
    const auto found = std::ranges::find(names, word, &Name::word);
    return found == names.end() ? std::nullopt : std::optional(found->code);
}

std::string list(Names names) {
    std::string words;
    for (const Name& name : names) words += (words.empty() ? "" : ", ") + std::string(name.word);
    return words;
}

bool starts_as_png(const std::string& path) {
    std::array<char, kPngSignature.size()> start{};
    std::ifstream file(path, std::ios::binary);
    return file.read(start.data(), start.size()) && std::ranges::equal(start, kPngSignature);
}

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

} // namespace

void expected(const std::string& what) { throw std::invalid_argument("expected " + what); }

std::optional<unsigned> to_number(std::string_view text, unsigned min, unsigned max, int base) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value >= min && value <= max ? std::optional(value) : std::nullopt;
}

std::vector<std::string_view> split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    for (std::size_t end = 0; (end = text.find(separator)) != std::string_view::npos;) {
        pieces.push_back(text.substr(0, end));
        text.remove_prefix(end + 1);
    }
    pieces.push_back(text);
    return pieces;
}

bool is_dotted_ipv4(const std::string& text) {
    in_addr parsed{};
    return ::inet_pton(AF_INET, text.c_str(), &parsed) == 1;
}

unsigned read_number(const std::string& text, unsigned min, unsigned max) {
    if (const auto value = to_number(text, min, max)) return *value;
    expected("a whole number from " + std::to_string(min) + " to " + std::to_string(max));
}

unsigned read_word(const std::string& text, Names names) {
    if (const auto code = to_code(names, text)) return *code;
    expected("one of " + list(names));
}

unsigned read_word_or_number(const std::string& text, Names names, unsigned max) {
    if (const auto code = to_code(names, text)) return *code;
    if (const auto value = to_number(text, 0, max)) return *value;
    expected(list(names) + " or a whole number from 0 to " + std::to_string(max));
}

std::vector<Controller> read_controllers(const std::string& text) {
    std::vector<Controller> controllers;
    for (const std::string_view one : split(text, ','))
        controllers.push_back(read_controller(std::string(one)));
    return controllers;
}

std::vector<Controller> read_controller_list(const std::string& path) {
    std::ifstream file(path);
    if (!file) expected("a file of addresses that can be read");
    std::vector<Controller> controllers;
    unsigned number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        line.erase(std::min(line.find('#'), line.size()));
        const auto first = line.find_first_not_of(" \t\r");
        if (first == std::string::npos) continue;
        try {
            controllers.push_back(
                read_controller(line.substr(first, line.find_last_not_of(" \t\r") + 1 - first)));
        } catch (const std::invalid_argument& wrong) {
            throw std::invalid_argument("line " + std::to_string(number) + ": " + wrong.what());
        }
    }
    if (controllers.empty() || file.bad()) expected("a file with the address of a controller on every line");
    return controllers;
}

Controller read_controller(const std::string& text) {
    Controller controller;
    const auto colon = text.find(':');
    controller.ip = text.substr(0, colon);
    const auto port =
        colon == std::string::npos ? controller.port : to_number(text.substr(colon + 1), 1, 65535);
    if (!is_dotted_ipv4(controller.ip) || !port)
        expected("an IPv4 address with or without a port, such as 192.168.0.199:5005");
    controller.port = static_cast<Ouint16>(*port);
    return controller;
}

Rect read_rect(const std::string& text) {
    const auto pieces = split(text, ',');
    std::array<Ouint16, 4> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto value =
            pieces.size() == values.size() ? to_number(pieces[i], i < 2 ? 0 : 1, 65535) : std::nullopt;
        if (!value) expected("X,Y,W,H in pixels (0 to 65535, W and H not 0), such as 0,0,128,32");
        values[i] = static_cast<Ouint16>(*value);
    }
    return {values[0], values[1], values[2], values[3]};
}

Ouint32 read_color(const std::string& text) {
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

std::string read_text(const std::string& text) { return text; }

std::string read_path(const std::string& text) {
    require_readable_file(text);
    return text;
}

std::string read_png_path(const std::string& text) {
    require_readable_file(text);
    if (!starts_as_png(text)) expected("a PNG picture");
    return text;
}

} // namespace qm::ctl
