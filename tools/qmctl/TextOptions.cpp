#include "TextOptions.h"

#include <algorithm>

namespace qm::ctl {
namespace {

constexpr Name kHorizontal[] = {{"left", 0}, {"center", 1}, {"right", 2}};
constexpr Name kVertical[] = {{"top", 0}, {"center", 1}, {"bottom", 2}};
constexpr unsigned kSmallestFitting = 6, kLargest = 1000; // points

// Lines as the library counts them: CR, LF and CR LF end one; an end at the very end begins no other.
unsigned count_lines(const std::string& text) {
    unsigned lines = 1;
    for (std::size_t i = 0; i + 1 < text.size(); ++i)
        if (text[i] == '\n' || (text[i] == '\r' && text[i + 1] != '\n')) ++lines;
    return lines;
}

// In pixels, for a size in points: ascent and descent as in most fonts, each rounded up.
unsigned line_height(unsigned points) {
    const auto rounded_up = [](unsigned a, unsigned b) { return (a + b - 1) / b; };
    const unsigned em = (points * 4 + 1) / 3;
    return rounded_up(15 * em, 16) + rounded_up(15 * em, 64);
}

} // namespace

void TextOptions::add_to(CLI::App& command) {
    add_value(command, "--font", m_font, "FONT",
              "Font family, or a .ttf or .ttc file (default " + m_font + ",\nwhich has Latin and Chinese)",
              read_font);
    add_number(command, "--size", m_size, 1, kLargest,
               "Points, 1 to 1000; 12 points are 16 pixels (default the largest with which the\n"
               "given lines fit the height, or the width when --vertical; at least 6)");
    add_value(command, "--color", m_color, "COLOR",
              "black, red, green, yellow, blue, magenta, cyan, white or #RRGGBB (default red)", read_color);
    auto* single = command.add_flag("--single", m_single, "One line, cut into pages (default when running)");
    command.add_flag("--multi", m_multi, "Lines wrapped to the width (default otherwise)")->excludes(single);
    add_word(command, "--halign", m_halign, kHorizontal, "left, center or right (default center)");
    add_word(command, "--valign", m_valign, kVertical, "top, center or bottom (default center)");
    command.add_flag("--bold", m_bold, "Bold");
    command.add_flag("--italic", m_italic, "Italic; a family without an italic face stays upright");
    add_number(command, "--spacing", m_spacing, 0, 255, "Pixels added between characters (default 0)");
    command.add_flag("--vertical", m_vertical, "Characters stacked into columns");
}

void TextOptions::apply_to(HVpageHeader_G6& page, const std::string& text, const Rect& rect,
                           bool running) const {
    const bool one_line = m_single || (running && !m_multi);
    page.arrMode = one_line ? SINGLELINE : MULTILINE;
    page.fontSize = m_size ? static_cast<Ouint16>(*m_size) : fitting_size(text, rect, one_line);
    page.color = m_color;
    page.fontBold = m_bold;
    page.fontItalic = m_italic;
    page.tdirection = m_vertical ? eVertical : eHorizontal;
    page.txtSpace = static_cast<Ouint16>(m_spacing);
    page.Halign = static_cast<Ouint8>(m_halign);
    page.Valign = static_cast<Ouint8>(m_valign);
}

Ouint16 TextOptions::fitting_size(const std::string& text, const Rect& rect, bool one_line) const {
    const unsigned room = m_vertical ? rect.width : rect.height;
    const unsigned line_room = room / (one_line ? 1 : count_lines(text));
    unsigned size = kSmallestFitting;
    while (size < kLargest && line_height(size + 1) <= line_room) ++size;
    return static_cast<Ouint16>(size);
}

} // namespace qm::ctl
