#include "program/GlyphSet.h"

#include "program/text/alignment.h"

#include <algorithm>

namespace qm {
namespace {

constexpr int kFar = 1'000'000'000;

void include(PixelBox& box, const PixelBox& other) {
    if (other.empty()) return;
    box = {std::min(box.left, other.left), std::min(box.top, other.top), std::max(box.right, other.right),
           std::max(box.bottom, other.bottom)};
}

PixelBox moved(const PixelBox& box, int dx, int dy) {
    return {box.left + dx, box.top + dy, box.right + dx, box.bottom + dy};
}

// What is lit; measuring alone says more than that at small sizes.
PixelBox ink_of(const GlyphShape& shape) {
    if (shape.runs) return shape.runs->box;
    return {shape.left, shape.top, shape.right, shape.bottom};
}

// A text set from 0 on, and where its ink is.
struct Run {
    std::vector<PlacedGlyph> glyphs;
    int advance = 0;
    PixelBox ink{kFar, kFar, -kFar, -kFar};

    void move(int dx) {
        for (PlacedGlyph& glyph : glyphs) glyph.x += dx;
        ink = moved(ink, dx, 0);
    }
};

Run run_of(Font& font, const std::u16string& text) {
    Run run;
    for (const char16_t c : text) {
        const GlyphShape& shape = font.shape(c);
        run.glyphs.push_back({&shape, run.advance, 0});
        include(run.ink, moved(ink_of(shape), run.advance, 0));
        run.advance += shape.advance;
    }
    return run;
}

void take_height(GlyphSet& set, const PixelBox& ink) {
    set.top = ink.top;
    set.bottom = ink.bottom;
}

// The parts of a glyph that dark rows separate, each a row a bar.
using Part = std::vector<PixelBox>;

std::vector<Part> parts_of(Font& font, const GlyphShape& shape) {
    std::vector<Part> parts;
    const PixelBox ink = ink_of(shape);
    if (ink.empty()) return parts;
    Canvas32 canvas(ink.right - ink.left, ink.bottom - ink.top);
    set_cairoColor(canvas.context(), eWhite);
    const PlacedGlyph glyph{&shape, -ink.left, -ink.top};
    font.show(canvas.context(), {&glyph, 1}, 0);
    const auto* row = reinterpret_cast<const Ouint32*>(canvas.pixels());
    bool dark = true;
    for (int y = ink.top; y < ink.bottom; ++y, row += canvas.width()) {
        const auto lit = [](Ouint32 pixel) { return (pixel & 0xFFFFFFU) != 0; };
        const auto first = std::find_if(row, row + canvas.width(), lit) - row;
        const auto length = std::count_if(row, row + canvas.width(), lit);
        if (length > 0 && dark) parts.emplace_back();
        dark = length == 0;
        const int left = ink.left + static_cast<int>(first);
        if (!dark) parts.back().push_back({left, y, left + static_cast<int>(length), y + 1});
    }
    return parts;
}

bool same_lengths(const PixelBox& one, const PixelBox& other) {
    return one.right - one.left == other.right - other.left;
}

// Two dots alike; a bar that is no dot; a stroke in one piece.
bool is_good(char16_t c, const std::vector<Part>& parts) {
    if (c == u':') return parts.size() == 2 && std::ranges::equal(parts[0], parts[1], same_lengths);
    if (parts.size() != 1) return false;
    const PixelBox& first = parts[0].front();
    return c == u'/' || (first.right - first.left > 1 && std::ranges::all_of(parts[0], [&](const auto& row) {
                             return same_lengths(row, first);
                         }));
}

PixelBox box_of(const Part& part) {
    PixelBox box = part.front();
    for (const PixelBox& bar : part) include(box, bar);
    return box;
}

// A dot without its slant.
PixelBox straight(const Part& dot) {
    const auto shorter = [](const PixelBox& a, const PixelBox& b) {
        return a.right - a.left < b.right - b.left;
    };
    const PixelBox& longest = *std::ranges::max_element(dot, shorter);
    return {longest.left, dot.front().top, longest.right, dot.back().bottom};
}

// Two dots made alike: as wide as the wider and as high as the lower one.
Part evened(const Part& upper, const Part& lower) {
    PixelBox one = straight(upper), other = straight(lower);
    const int width = std::max(one.right - one.left, other.right - other.left);
    const int height = std::min(one.bottom - one.top, other.bottom - other.top);
    for (PixelBox* dot : {&one, &other})
        *dot = {dot->left, dot->bottom - height, dot->left + width, dot->bottom};
    return {one, other};
}

// The separator in proportion to the digits.
Part bars_for(char16_t c, const GlyphSet& digits) {
    const int height = digits.height();
    if (c == u':') {
        const int side = std::max(1, (height + 3) / 6), dark = std::max(0, height - 2 * side);
        const int margin = std::min((dark + 2) / 4, std::max(0, dark - 1) / 2);
        const int first = digits.top + margin, second = digits.bottom - margin - side;
        return {{0, first, side, first + side}, {0, second, side, second + side}};
    }
    if (c == u'-') {
        const int thickness = std::max(1, (height + 5) / 10), top = digits.top + (height - thickness) / 2;
        return {{0, top, std::max(2, (digits.width + 1) / 2), top + thickness}};
    }
    Part stroke;
    for (int y = 0; y < height; ++y) {
        const int x = (height - 1 - y) / 2;
        stroke.push_back({x, digits.top + y, x + 1, digits.top + y + 1});
    }
    return stroke;
}

// None for a good glyph.
Part bars_of(char16_t c, const std::vector<Part>& parts, const GlyphSet& digits) {
    if (is_good(c, parts)) return {};
    return c == u':' && parts.size() == 2 ? evened(parts[0], parts[1]) : bars_for(c, digits);
}

} // namespace

// The cell is as wide as the widest text, and holds all ink. Slanted ink leans out on one side and leaves
// room on the other, so that all texts move together.
GlyphSet set_of_texts(Font& font, const std::vector<std::u16string>& texts, Ouint8 align) {
    GlyphSet set;
    std::vector<Run> runs;
    for (const std::u16string& text : texts) {
        runs.push_back(run_of(font, text));
        set.width = std::max({set.width, runs.back().advance, 1});
    }
    PixelBox ink{kFar, kFar, -kFar, -kFar};
    for (Run& run : runs) {
        run.move(get_x_area(align, set.width, run.advance));
        include(ink, run.ink);
    }
    if (ink.empty()) ink = {0, 0, set.width, 1};
    set.width = std::max(set.width, ink.right - ink.left);
    take_height(set, ink);
    const int shift = ink.left < 0 ? -ink.left : std::min(0, set.width - ink.right);
    set.left = ink.left + shift;
    set.right = set.width - ink.right - shift;
    for (Run& run : runs) {
        run.move(shift);
        set.glyphs.push_back(std::move(run.glyphs));
    }
    return set;
}

GlyphSet set_of_separator(Font& font, char16_t c, const GlyphSet& digits) {
    const GlyphShape& shape = font.shape(c);
    GlyphSet set;
    set.bars = bars_of(c, parts_of(font, shape), digits);
    const PixelBox ink = set.bars.empty() ? ink_of(shape) : box_of(set.bars);
    take_height(set, ink);
    const int width = ink.right - ink.left;
    const int bothGaps = std::max(0, shape.advance - width) + digits.left + digits.right;
    const int widest = digits.width / 4; // where each character is as wide as a digit
    const int gap = std::max({1, std::min(bothGaps / 2, widest), digits.left, digits.right});
    set.left = gap - digits.right;
    set.right = gap - digits.left;
    set.width = set.left + width + set.right;
    const int shift = set.left - ink.left;
    for (PixelBox& bar : set.bars) bar = moved(bar, shift, 0);
    set.glyphs = {{{&shape, shift, 0}}};
    return set;
}

} // namespace qm
