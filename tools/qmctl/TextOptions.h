// How the text of an area looks.
#pragma once

#include "arguments.h"

#include <optional>

namespace qm::ctl {

class TextOptions {
  public:
    void add_to(CLI::App& command);

    // The text settings of a page for text in rect; running text is one line unless --multi is given.
    void apply_to(HVpageHeader_G6& page, const std::string& text, const Rect& rect, bool running) const;
    [[nodiscard]] const std::string& font() const { return m_font; }

  private:
    [[nodiscard]] Ouint16 fitting_size(const std::string& text, const Rect& rect, bool one_line) const;

    std::string m_font = "WenQuanYi Micro Hei";
    std::optional<unsigned> m_size;
    Ouint32 m_color = eRed;
    bool m_single = false, m_multi = false;
    bool m_bold = false, m_italic = false, m_vertical = false;
    unsigned m_spacing = 0;
    unsigned m_halign = 1, m_valign = 1;
};

} // namespace qm::ctl
