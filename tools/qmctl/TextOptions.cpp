#include "TextOptions.h"

namespace qm::ctl {

void TextOptions::add_to(ArgumentList& command) {
    add_value(command, "--font", m_style.font, "FONT",
              "Font family, or a .ttf, .ttc, .otf, .otb, .pcf, .pcf.gz or .bdf file\n(default " +
                  m_style.font + ", which has Latin and Chinese)",
              read_font);
    add_number(command, "--size", m_style.size, 1, kLargestSize,
               "Points, 1 to 1000; 12 points are 16 pixels (default the largest with which the\n"
               "given lines fit the height, or the whole text fits when --vertical; at least 6)");
    add_value(command, "--color", m_style.color, "COLOR",
              "black, red, green, yellow, blue, magenta, cyan, white or #RRGGBB (default red)", read_color);
    const auto single = command.add_flag("--single", "One line, cut into pages (default when running)",
                                         [this] { m_style.one_line = true; });
    command
        .add_flag("--multi", "Lines wrapped to the width (default otherwise)",
                  [this] { m_style.one_line = false; })
        .excludes(single);
    add_word(command, "--halign", m_style.halign, kHorizontal, "left, center or right (default center)");
    add_word(command, "--valign", m_style.valign, kVertical, "top, center or bottom (default center)");
    command.add_flag("--bold", m_style.bold, "Bold");
    command.add_flag("--italic", m_style.italic, "Italic; a family without an italic face stays upright");
    add_number(command, "--spacing", m_style.spacing, 0, 255, "Pixels added between characters (default 0)");
    command.add_flag("--vertical", m_style.vertical, "Characters stacked into columns");
}

void TextOptions::apply_to(HVpageHeader_G6& page, const std::string& text, const Rect& rect,
                           bool running) const {
    m_style.apply_to(page, text, rect, running);
}

} // namespace qm::ctl
