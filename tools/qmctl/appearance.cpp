#include "appearance.h"

namespace qm::ctl {
namespace {

constexpr unsigned kUsualStay = 300;
constexpr unsigned kSmallestFitting = 6; // points

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

bool Effect::running() const { return mode == 4 || mode == 38 || mode == 40; }

unsigned Effect::stay_time() const { return stay.value_or(running() ? 0 : kUsualStay); }

unsigned TextStyle::fitting_size(const std::string& text, const Rect& rect, bool single) const {
    const unsigned room = vertical ? rect.width : rect.height;
    const unsigned line_room = room / (single ? 1 : count_lines(text));
    unsigned points = kSmallestFitting;
    while (points < kLargestSize && line_height(points + 1) <= line_room) ++points;
    return points;
}

} // namespace qm::ctl
