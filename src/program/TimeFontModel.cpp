#include "program/TimeFontModel.h"

#include "program/HVarea.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qm {
namespace {

constexpr int kSmallestLegible = 7; // pixels
constexpr char16_t kSpace = u' ';

// A text set from 0 on, and where its ink is.
struct Run {
    std::vector<PlacedGlyph> glyphs;
    int advance = 0;
    int left = std::numeric_limits<int>::max() / 2, right = std::numeric_limits<int>::min() / 2;

    void move(int dx) {
        for (PlacedGlyph& glyph : glyphs) glyph.x += dx;
        left += dx;
        right += dx;
    }
};

Run run_of(Font& font, const std::u16string& text) {
    Run run;
    for (const char16_t c : text) {
        const GlyphShape& shape = font.shape(c);
        run.glyphs.push_back({&shape, run.advance, 0});
        if (!shape.blank()) {
            run.left = std::min(run.left, run.advance + shape.left);
            run.right = std::max(run.right, run.advance + shape.right);
        }
        run.advance += shape.advance;
    }
    return run;
}

// Numbers share the digits; the other pieces are told apart.
TimePiece kind_of(const TimePiece& piece) {
    return digits_of(piece.unit) > 0 ? TimePiece{TimeUnit::year} : piece;
}

// Names stand in their cells as the lines do in the area, single characters in the middle.
Ouint8 align_in_cell(const TimePiece& kind, Ouint8 align) {
    constexpr Ouint8 kCentre = 1;
    return kind.unit == TimeUnit::weekday || kind.unit == TimeUnit::amPm ? align : kCentre;
}

} // namespace

TimeFontModel::TimeFontModel(const TimeText& text, int areaWidth, int areaHeight)
    : m_areaWidth(areaWidth), m_areaHeight(areaHeight) {
    const std::size_t groups = text.groups.size();
    if (groups == 0 || areaWidth <= 0 || areaHeight <= 0) return;
    bool fits = false;
    for (std::size_t i = 0; i < groups && !fits; ++i)
        fits = fit(text, text.severalLines ? groups - i : i + 1);
    if (!fits) break_lines(text, text.severalLines ? groups : 1);
    cut_cells();
    place(text);
}

// Tries the sizes from the largest on; false, with the smallest one measured, when none will do.
bool TimeFontModel::fit(const TimeText& text, std::size_t lines) {
    const int wanted = std::max(1, static_cast<int>(text.font.size));
    const int smallest = std::min(wanted, kSmallestLegible);
    for (int size = wanted; size >= smallest; --size) {
        measure(text, size);
        break_lines(text, lines);
        const int width = widest_line(), height = least_height();
        if (width <= m_areaWidth && height <= m_areaHeight) return true;
        // Hinted fonts do not scale evenly, so that the guess leaves some sizes to try.
        const double excess = std::min(1.0 * m_areaWidth / width, 1.0 * m_areaHeight / height);
        size = std::min(size, std::max(smallest + 1, static_cast<int>(size * excess * 1.25) + 2));
    }
    return false;
}

void TimeFontModel::measure(const TimeText& text, int size) {
    FontChoice choice = text.font;
    choice.size = size;
    m_font = font_for(choice);
    m_font->renew_search_budget();
    m_kinds.clear();
    m_sets.clear();
    m_top = m_bottom = m_underline = 0;
    const auto add = [&](const TimePiece& piece) {
        const TimePiece kind = kind_of(piece);
        if (std::find(m_kinds.begin(), m_kinds.end(), kind) != m_kinds.end()) return;
        const auto texts = texts_of(kind, text.weekStyle);
        m_kinds.push_back(kind);
        m_sets.push_back(measured_set(texts, align_in_cell(kind, text.align)));
        add_vertical_extent(texts);
    };
    for (const TimePieces& group : text.groups) std::for_each(group.begin(), group.end(), add);
    if (text.groups.size() > 1) add({TimeUnit::literal, kSpace});
    if (text.underline) add_underline(size);
    if (m_bottom == m_top) m_bottom = m_top + 1;
}

// The cell is as wide as the widest text, or as all ink. Slanted ink leans out on one side and leaves room on
// the other: all texts move together.
GlyphSet TimeFontModel::measured_set(const std::vector<std::u16string>& texts, Ouint8 align) {
    GlyphSet set;
    std::vector<Run> runs;
    for (const std::u16string& text : texts) {
        runs.push_back(run_of(*m_font, text));
        set.width = std::max({set.width, runs.back().advance, 1});
    }
    int left = set.width, right = 0;
    for (Run& run : runs) {
        run.move(HVarea::get_x_area(align, set.width, run.advance));
        left = std::min(left, run.left);
        right = std::max(right, run.right);
    }
    set.width = std::max(set.width, right - left);
    const int shift = left < 0 ? -left : std::min(0, set.width - right);
    for (Run& run : runs) {
        run.move(shift);
        set.glyphs.push_back(std::move(run.glyphs));
    }
    return set;
}

void TimeFontModel::add_vertical_extent(const std::vector<std::u16string>& texts) {
    for (const std::u16string& text : texts)
        for (const char16_t c : text)
            if (const GlyphShape& shape = m_font->shape(c); !shape.blank()) {
                m_top = std::min(m_top, shape.top);
                m_bottom = std::max(m_bottom, shape.bottom);
            }
}

void TimeFontModel::add_underline(int size) {
    m_underline = std::max(1, static_cast<int>(std::lround(size / 16.0)));
    m_underlineTop = 1 + m_underline / 2;
    m_bottom = std::max(m_bottom, m_underlineTop + m_underline);
}

// The first groups share a line when there are more groups than lines.
void TimeFontModel::break_lines(const TimeText& text, std::size_t lines) {
    m_lines.assign(lines, {});
    const std::size_t shared = text.groups.size() - lines;
    for (std::size_t i = 0; i < text.groups.size(); ++i) {
        Line& line = m_lines[i <= shared ? 0 : i - shared];
        if (!line.empty()) line.push_back({TimeUnit::literal, kSpace});
        line.insert(line.end(), text.groups[i].begin(), text.groups[i].end());
    }
}

std::size_t TimeFontModel::set_of(const TimePiece& piece) const {
    const auto kind = std::find(m_kinds.begin(), m_kinds.end(), kind_of(piece));
    return static_cast<std::size_t>(kind - m_kinds.begin());
}

int TimeFontModel::width_of(const TimePiece& piece) const {
    return m_sets[set_of(piece)].width * std::max(1, digits_of(piece.unit));
}

int TimeFontModel::width_of(const Line& line) const {
    int width = 0;
    for (const TimePiece& piece : line) width += width_of(piece);
    return width;
}

int TimeFontModel::widest_line() const {
    int widest = 1;
    for (const Line& line : m_lines) widest = std::max(widest, width_of(line));
    return widest;
}

// With a dark row between the lines.
int TimeFontModel::least_height() const {
    const int lines = static_cast<int>(m_lines.size());
    return lines * cell_height() + lines - 1;
}

// A space shows nothing but the line below it.
bool TimeFontModel::shows(const TimePiece& piece) const {
    return m_underline > 0 || piece != TimePiece{TimeUnit::literal, kSpace};
}

// Higher cells than the area lose as much at the top as at the bottom.
void TimeFontModel::cut_cells() {
    const int excess = std::max(0, cell_height() - m_areaHeight);
    m_top += excess / 2;
    m_bottom -= excess - excess / 2;
}

void TimeFontModel::place(const TimeText& text) {
    const int lines = static_cast<int>(m_lines.size()), height = cell_height();
    const int usual = std::max(1, m_font->line_height() - height);
    const int gaps = std::max(1, lines - 1);
    const int room = std::max(0, m_areaHeight - lines * height) / gaps;
    const int gap = lines > 1 ? std::min(usual, room) : 0;
    int y = HVarea::get_y_area(m_areaHeight, 1, lines * height + (lines - 1) * gap);
    for (const Line& line : m_lines) {
        place_line(line, text.align, y);
        y += height + gap;
    }
}

void TimeFontModel::place_line(const Line& line, Ouint8 align, int y) {
    int x = HVarea::get_x_area(align, m_areaWidth, width_of(line));
    for (const TimePiece& piece : line) {
        const int width = width_of(piece);
        if (x + width > m_areaWidth || y + cell_height() > m_areaHeight) return;
        if (shows(piece)) m_units.push_back({piece.unit, x, y, static_cast<Ouint8>(set_of(piece))});
        x += width;
    }
}

void TimeFontModel::draw(cairo_t* c, const GlyphSet& set, std::size_t glyph, int x, int y) const {
    cairo_save(c);
    cairo_rectangle(c, x, y, set.width, cell_height());
    cairo_clip(c);
    std::vector<PlacedGlyph> placed = set.glyphs[glyph];
    for (PlacedGlyph& one : placed) one.y = y - m_top;
    m_font->show(c, placed, x);
    if (m_underline > 0) {
        cairo_rectangle(c, x, y - m_top + m_underlineTop, set.width, m_underline);
        cairo_fill(c);
    }
    cairo_restore(c);
}

} // namespace qm
