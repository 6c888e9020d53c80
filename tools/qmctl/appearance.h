// How the pages of an area appear and how its text looks: the same for options and for descriptions.
#pragma once

#include "arguments.h"

#include <optional>

namespace qm::ctl {

inline constexpr Name kModes[] = {{"static", 1}, {"left", 4}, {"right", 38}};
inline constexpr Name kHorizontal[] = {{"left", 0}, {"center", 1}, {"right", 2}};
inline constexpr Name kVertical[] = {{"top", 0}, {"center", 1}, {"bottom", 2}};
inline constexpr unsigned kLargestSize = 1000; // points

struct Effect {
    unsigned mode = 1, speed = 32;
    std::optional<unsigned> stay; // in the controller's unit; else a while, and no time for running text
    unsigned repeat = 1;

    // The text runs through the area instead of standing in it.
    [[nodiscard]] bool running() const;
    [[nodiscard]] unsigned stay_time() const;

    template <class Page> void apply_to(Page& page) const {
        page.DisplayMode = static_cast<Ouint8>(mode);
        page.Speed = static_cast<Ouint8>(speed);
        page.StayTime = static_cast<Ouint16>(stay_time());
        page.RepeatTime = static_cast<Ouint8>(repeat);
    }
};

struct TextStyle {
    std::string font = "WenQuanYi Micro Hei"; // a family, or a file
    std::optional<unsigned> size;             // points; else the largest with which the text fits
    Ouint32 color = eRed;
    std::optional<bool> one_line; // cut into pages; else for running text only
    bool bold = false, italic = false, vertical = false;
    unsigned spacing = 0; // pixels
    unsigned halign = 1, valign = 1;

    // The text settings of a page for text in rect.
    template <class Page>
    void apply_to(Page& page, const std::string& text, const Rect& rect, bool running) const {
        const bool single = one_line.value_or(running);
        page.arrMode = single ? SINGLELINE : MULTILINE;
        page.fontSize = static_cast<Ouint16>(size ? *size : fitting_size(text, rect, running));
        page.color = color;
        page.fontBold = bold;
        page.fontItalic = italic;
        page.tdirection = vertical ? eVertical : eHorizontal;
        page.txtSpace = static_cast<Ouint16>(spacing);
        page.Halign = static_cast<Ouint8>(halign);
        page.Valign = static_cast<Ouint8>(valign);
    }

  private:
    [[nodiscard]] unsigned fitting_size(const std::string& text, const Rect& rect, bool running) const;
    // Of lines with so many characters each, broken where a column is full.
    [[nodiscard]] unsigned columns_of(const std::vector<unsigned>& lengths, unsigned height,
                                      unsigned points) const;
};

} // namespace qm::ctl
