#include "appearance.h"

#include <algorithm>
#include <numeric>

namespace qm::ctl {
namespace {

constexpr unsigned kUsualStay = 300;
constexpr unsigned kSmallestFitting = 6; // points

// Characters of each line. As the library counts them, CR, LF and CR LF end one, and an end at the very end
// begins no other.
std::vector<unsigned> line_lengths(const std::string& text) {
    std::vector<unsigned> lengths{0};
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool last = i + 1 == text.size();
        if (text[i] == '\n' || (text[i] == '\r' && !last && text[i + 1] != '\n')) {
            if (!last) lengths.push_back(0);
        } else if ((static_cast<unsigned char>(text[i]) & 0xC0U) != 0x80 && text[i] != '\r') {
            ++lengths.back();
        }
    }
    return lengths;
}

unsigned rounded_up(unsigned a, unsigned b) { return (a + b - 1) / b; }

// Width of a full-width character in pixels, for a size in points.
unsigned em_width(unsigned points) { return (points * 4 + 1) / 3; }

// In pixels: ascent and descent as in most fonts, each rounded up.
unsigned line_height(unsigned points) {
    const unsigned em = em_width(points);
    return rounded_up(15 * em, 16) + rounded_up(15 * em, 64);
}

} // namespace

bool Effect::running() const { return mode == 4 || mode == 38 || mode == 40; }

unsigned Effect::stay_time() const { return stay.value_or(running() ? 0 : kUsualStay); }

unsigned TextStyle::fitting_size(const std::string& text, const Rect& rect, bool running) const {
    const bool single = one_line.value_or(running);
    std::vector<unsigned> lengths = line_lengths(text);
    if (single) { // its line ends become spaces; when it runs, it is as long as it likes
        const auto spaces = static_cast<unsigned>(lengths.size()) - 1;
        lengths = {running ? 1 : std::reduce(lengths.begin(), lengths.end(), spaces)};
    }
    const auto fits = [&](unsigned points) {
        if (!vertical) return line_height(points) * lengths.size() <= rect.height;
        const unsigned columns = columns_of(lengths, rect.height, points);
        return line_height(points) <= rect.height && columns * em_width(points) <= rect.width &&
               (columns == 1 || !single);
    };
    unsigned points = kSmallestFitting;
    while (points < kLargestSize && fits(points + 1)) ++points;
    return points;
}

unsigned TextStyle::columns_of(const std::vector<unsigned>& lengths, unsigned height, unsigned points) const {
    const unsigned longest = std::max(1U, (height + spacing) / (line_height(points) + spacing));
    unsigned columns = 0;
    for (const unsigned length : lengths) columns += std::max(1U, rounded_up(length, longest));
    return columns;
}

} // namespace qm::ctl
