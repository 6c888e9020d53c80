#include "program/text/line_spacing.h"

#include "program/text/alignment.h"

#include <algorithm>
#include <numeric>

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

std::size_t lines_that_fit(std::span<const LineInk> lines, int height) {
    std::size_t count = 1;
    int baseline = -lines.front().top;
    for (; count < lines.size(); ++count) {
        baseline += closest(lines[count - 1], lines[count]);
        if (baseline + lines[count].bottom > height) break;
    }
    return count;
}

std::vector<int> baselines(std::span<const LineInk> lines, int height, const FontRows& font, Ouint8 align) {
    if (lines.size() == 1) return {alone(lines.front(), height, font, align)};
    std::vector<int> tight, wanted;
    for (std::size_t i = 0; i + 1 < lines.size(); ++i) {
        tight.push_back(closest(lines[i], lines[i + 1]));
        wanted.push_back(std::max(font.line, tight.back()));
    }
    const auto sum = [](const std::vector<int>& pitches) {
        return std::accumulate(pitches.begin(), pitches.end(), 0);
    };
    const int ink = lines.back().bottom - lines.front().top;
    const bool roomy = sum(wanted) + font.line <= height;
    std::vector<int>& pitches = roomy ? wanted : tight;
    if (!roomy) widen(pitches, height - ink - sum(pitches), font.line);
    const int last = sum(pitches);
    int y = roomy ? get_x_area(align, height, last + font.line) + font.ascent
                  : get_x_area(align, height, ink + last) - lines.front().top;
    if (ink + last <= height)
        y = std::max(std::min(y, height - last - lines.back().bottom), -lines.front().top);
    std::vector<int> places{y};
    for (const int pitch : pitches) places.push_back(y += pitch);
    return places;
}

} // namespace qm
