// Where the lines of a page stand.
#pragma once

#include "qm_sdk_dual.h"

#include <span>
#include <vector>

namespace qm {

// What a line lights around its baseline, in rows, y downwards.
struct LineInk {
    int top = 0, bottom = 0;
    int cell = 0; // rows of its bitmap characters; 0 when there are none
};

// Of the font: its rows above the baseline, those of a line, and how far its letters reach.
struct FontRows {
    int ascent, line;
    LineInk letters{};
};

// Between the baselines of neighbours, at the least: one dark row is between their ink. Bitmaps may stand
// cell to cell where these touch.
[[nodiscard]] int closest(const LineInk& upper, const LineInk& lower);

// How many of the lines, at least one, stand on a page when they come as close as that.
[[nodiscard]] std::size_t lines_that_fit(std::span<const LineInk> lines, int height);

// The baselines of the lines of a page. They stand a line of the font apart where there is room, else as far
// as there is, and share what is left by their alignment: 1 centre, 2 bottom, else top.
[[nodiscard]] std::vector<int> baselines(std::span<const LineInk> lines, int height, const FontRows& font,
                                         Ouint8 align);

} // namespace qm
