// How the text of an area looks.
#pragma once

#include "appearance.h"

namespace qm::ctl {

class TextOptions {
  public:
    void add_to(ArgumentList& command);

    // The text settings of a page for text in rect; running text is one line unless --multi is given.
    void apply_to(HVpageHeader_G6& page, const std::string& text, const Rect& rect, bool running) const;
    [[nodiscard]] const std::string& font() const { return m_style.font; }

  private:
    TextStyle m_style;
};

} // namespace qm::ctl
