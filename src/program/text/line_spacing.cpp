#include "program/text/line_spacing.h"

#include "program/text/alignment.h"

#include <algorithm>

namespace qm {
namespace {

constexpr Ouint8 kBottom = 2;

int moved_inside(int y, const LineInk& ink, int height) {
    return std::max(std::min(y, height - ink.bottom), -ink.top);
}

// A line that is higher than the page gives up the empty rows above and below its characters before a
// character is cut. At the bottom there is room for all letters: side by side, texts stand on one baseline.
int alone(const LineInk& line, int height, const FontRows& font, Ouint8 align) {
    int y = get_x_area(align, height, font.line) + font.ascent;
    if (align == kBottom && font.letters.bottom - font.letters.top <= height)
        y = moved_inside(y, font.letters, height);
    return moved_inside(y, line, height);
}

// Widens the smallest first, to a line of the font at most.
void widen(std::vector<int>& pitches, int rows, int most) {
    while (rows > 0) {
        const int smallest = *std::min_element(pitches.begin(), pitches.end());
        if (smallest >= most) return;
        for (int& pitch : pitches)
            if (pitch == smallest && rows-- > 0) ++pitch;
    }
}

} // namespace

int closest(const LineInk& upper, const LineInk& lower) {
    const int touching = upper.bottom - lower.top;
    const int cell = std::max(upper.cell, lower.cell);
    return std::max(1, cell > 0 ? std::min(touching + 1, std::max(touching, cell)) : touching + 1);
}

std::size_t lines_that_fit(std::span<const LineInk> lines, int height, const FontRows& font) {
    std::size_t count = 1;
    int baseline = -lines.front().top;
    for (; count < lines.size(); ++count) {
        baseline += closest(lines[count - 1], lines[count]);
        if (baseline + lines[count].bottom > height) break;
    }
    const auto apart = static_cast<std::size_t>(std::max(1, height / font.line));
    return std::max(count, std::min(apart, lines.size()));
}

std::vector<int> baselines(std::span<const LineInk> lines, int height, const FontRows& font, Ouint8 align) {
    const int count = static_cast<int>(lines.size());
    if (count == 1) return {alone(lines.front(), height, font, align)};
    std::vector<int> pitches(lines.size() - 1, font.line);
    int y = get_x_area(align, height, count * font.line) + font.ascent;
    if (count * font.line > height) {
        int used = lines.back().bottom - lines.front().top;
        for (std::size_t i = 0; i < pitches.size(); ++i) used += pitches[i] = closest(lines[i], lines[i + 1]);
        widen(pitches, height - used, font.line);
        int needed = lines.back().bottom - lines.front().top;
        for (const int pitch : pitches) needed += pitch;
        y = get_x_area(align, height, needed) - lines.front().top;
    }
    std::vector<int> places{y};
    for (const int pitch : pitches) places.push_back(y += pitch);
    return places;
}

} // namespace qm
