#include "program/TimeFontModel.h"

#include "program/text/alignment.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qm {
namespace {

constexpr int kSmallestLegible = 7; // pixels
constexpr TimePiece kSpace{TimeUnit::literal, u' '};

// Numbers share the digits; the other pieces are told apart.
TimePiece kind_of(const TimePiece& piece) {
    return digits_of(piece.unit) > 0 ? TimePiece{TimeUnit::year} : piece;
}

// Names are aligned in their cells as the lines are in the area; single characters are centred.
Ouint8 align_in_cell(const TimePiece& kind, Ouint8 align) {
    constexpr Ouint8 kCentre = 1;
    return kind.unit == TimeUnit::weekday || kind.unit == TimeUnit::amPm ? align : kCentre;
}

} // namespace

TimeFontModel::TimeFontModel(const TimeText& text, int areaWidth, int areaHeight)
    : m_text(text), m_areaWidth(areaWidth), m_areaHeight(areaHeight), m_choice(text.font) {
    if (areaWidth <= 0 || areaHeight <= 0) return;
    bool fits = fit_anything();
    if (!fits && std::exchange(m_text.underline, false)) fits = fit_anything();
    if (fits)
        place();
    else
        m_sets.clear();
}

// A clock is there for the time, then for the date. Something cut or broken says more than a dark area, but a
// part of a date would be another date.
bool TimeFontModel::fit_anything() {
    const TimeText& t = m_text;
    return fit_with(t.time) || fit_broken(t.time) || fit_with(t.minutes) || fit_broken(t.minutes) ||
           fit({t.date, t.week}) || fit({t.date}) || fit_broken(t.date) || fit({t.week}) || fit({t.hours});
}

bool TimeFontModel::fit_with(const TimePieces& time) {
    if (time.empty()) return false;
    const TimePieces &date = m_text.date, &week = m_text.week;
    return fit({date, week, time}) || fit({date, time}) || fit({week, time}) || fit({time});
}

// On lines as near as possible to those that were asked for.
bool TimeFontModel::fit(std::initializer_list<TimePieces> groups) {
    m_spaced = true;
    m_groups.clear();
    std::ranges::copy_if(groups, std::back_inserter(m_groups),
                         [](const auto& group) { return !group.empty(); });
    const std::size_t most = m_groups.size();
    for (std::size_t i = 0; i < most; ++i)
        if (fit_on_lines(m_text.severalLines ? most - i : i + 1)) return true;
    return false;
}

bool TimeFontModel::fit_broken(const TimePieces& group) {
    m_spaced = false;
    m_groups = parts_of(group);
    for (std::size_t lines = 2; lines <= m_groups.size(); ++lines)
        if (fit_on_lines(lines)) return true;
    return false;
}

// Tries the sizes from the largest on.
bool TimeFontModel::fit_on_lines(std::size_t lines) {
    const int wanted = std::max(1, static_cast<int>(m_text.font.size));
    const int smallest = std::min(wanted, kSmallestLegible);
    for (int size = wanted; size >= smallest; --size) {
        measure(size);
        break_lines(lines);
        const int width = widest_line();
        const int height = height_of_lines() + static_cast<int>(lines) - 1; // a dark row between them
        if (width <= m_areaWidth && height <= m_areaHeight) return true;
        // Hinted fonts do not scale evenly, so that the guess leaves some sizes to try.
        const double excess = std::min(1.0 * m_areaWidth / width, 1.0 * m_areaHeight / height);
        size = std::min(size, std::max(smallest + 1, static_cast<int>(size * excess * 1.25) + 2));
    }
    return false;
}

void TimeFontModel::measure(int size) {
    m_choice.size = size;
    m_font = font_for(m_choice);
    if (m_font->is_substitute()) m_choice.path.clear(); // said once
    m_kinds.clear();
    m_sets.clear();
    const auto add = [&](const TimePiece& piece) {
        const TimePiece kind = kind_of(piece);
        if (std::find(m_kinds.begin(), m_kinds.end(), kind) != m_kinds.end()) return;
        m_sets.push_back(set_for(kind));
        m_kinds.push_back(kind);
    };
    for (const TimePieces& group : m_groups) std::for_each(group.begin(), group.end(), add);
    if (m_spaced && m_groups.size() > 1) add(kSpace);
    m_underline = 0;
    if (m_text.underline) add_underline(size);
}

void TimeFontModel::add_underline(int size) {
    m_underline = std::max(1, static_cast<int>(std::lround(size / 16.0)));
    m_underlineTop = 1 + m_underline / 2;
    for (GlyphSet& set : m_sets) set.bottom = std::max(set.bottom, m_underlineTop + m_underline);
}

// Separators come behind the digits of their group.
GlyphSet TimeFontModel::set_for(const TimePiece& kind) const {
    if (kind.unit == TimeUnit::literal && is_separator(kind.character))
        return set_of_separator(*m_font, kind.character, m_sets[set_of({TimeUnit::year})]);
    return set_of_texts(*m_font, texts_of(kind, m_text.weekStyle), align_in_cell(kind, m_text.align));
}

TimeFontModel::Line TimeFontModel::line_of(std::span<const TimePieces> groups) const {
    Line line{{groups.begin(), groups.end()}};
    for (const TimePieces& group : groups)
        for (const TimePiece& piece : group) {
            if (!shows(piece)) continue;
            const GlyphSet& set = m_sets[set_of(piece)];
            const bool first = line.top == line.bottom;
            line.top = first ? set.top : std::min(line.top, set.top);
            line.bottom = first ? set.bottom : std::max(line.bottom, set.bottom);
        }
    return line;
}

// Two lines for three groups break where the wider line is narrower, but hour and minute stay together.
void TimeFontModel::break_lines(std::size_t lines) {
    const std::span<const TimePieces> groups(m_groups);
    m_lines.clear();
    if (lines == groups.size()) {
        for (std::size_t i = 0; i < lines; ++i) m_lines.push_back(line_of(groups.subspan(i, 1)));
    } else if (lines == 1) {
        m_lines.push_back(line_of(groups));
    } else {
        m_lines = {line_of(groups.first(2)), line_of(groups.subspan(2))};
        const int widest = widest_line();
        std::vector<Line> other{line_of(groups.first(1)), line_of(groups.subspan(1))};
        m_lines.swap(other);
        const bool secondsApart = groups.back().front().unit == TimeUnit::second;
        if (secondsApart || widest <= widest_line()) m_lines.swap(other);
    }
}

std::size_t TimeFontModel::set_of(const TimePiece& piece) const {
    const auto kind = std::find(m_kinds.begin(), m_kinds.end(), kind_of(piece));
    return static_cast<std::size_t>(kind - m_kinds.begin());
}

int TimeFontModel::width_of(const TimePiece& piece) const {
    return m_sets[set_of(piece)].width * std::max(1, digits_of(piece.unit));
}

int TimeFontModel::width_of(const TimePieces& pieces) const {
    int width = 0;
    for (const TimePiece& piece : pieces) width += width_of(piece);
    return width;
}

int TimeFontModel::width_of(const Line& line) const {
    int width = 0;
    for (const TimePieces& group : line.groups)
        width += (m_spaced && width > 0 ? width_of(kSpace) : 0) + width_of(group);
    return width;
}

int TimeFontModel::widest_line() const {
    int widest = 1;
    for (const Line& line : m_lines) widest = std::max(widest, width_of(line));
    return widest;
}

int TimeFontModel::height_of_lines() const {
    int height = 0;
    for (const Line& line : m_lines) height += line.height();
    return std::max(1, height);
}

// A space shows nothing but its underline.
bool TimeFontModel::shows(const TimePiece& piece) const { return m_underline > 0 || piece != kSpace; }

// Lines have the gaps of the font where there is room, and stand in the middle.
void TimeFontModel::place() {
    const int gaps = static_cast<int>(m_lines.size()) - 1, heights = height_of_lines();
    int gap = 0;
    if (gaps > 0) {
        const int usual = m_font->line_height() - heights / (gaps + 1);
        gap = std::clamp(usual, 0, std::max(0, (m_areaHeight - heights) / gaps));
    }
    int y = get_y_area(m_areaHeight, 1, heights + gaps * gap);
    for (const Line& line : m_lines) {
        place_line(line, y - line.top);
        y += line.height() + gap;
    }
}

void TimeFontModel::place_line(const Line& line, int baseline) {
    int x = get_x_area(m_text.align, m_areaWidth, width_of(line));
    const auto put = [&](const TimePiece& piece) {
        const std::size_t set = set_of(piece);
        if (shows(piece))
            m_units.push_back({piece.unit, x, baseline + m_sets[set].top, static_cast<Ouint8>(set)});
        x += width_of(piece);
    };
    for (const TimePieces& group : line.groups) {
        if (m_spaced && &group != &line.groups.front()) put(kSpace);
        std::for_each(group.begin(), group.end(), put);
    }
}

void TimeFontModel::draw(cairo_t* c, const GlyphSet& set, std::size_t glyph, int x, int y) const {
    cairo_save(c);
    cairo_rectangle(c, x, y, set.width, set.height());
    cairo_clip(c);
    const int baseline = y - set.top;
    if (set.bars.empty()) {
        std::vector<PlacedGlyph> placed = set.glyphs[glyph];
        for (PlacedGlyph& one : placed) one.y = baseline;
        m_font->show(c, placed, x);
    }
    for (const PixelBox& bar : set.bars)
        cairo_rectangle(c, x + bar.left, baseline + bar.top, bar.right - bar.left, bar.bottom - bar.top);
    if (m_underline > 0) cairo_rectangle(c, x, baseline + m_underlineTop, set.width, m_underline);
    cairo_fill(c);
    cairo_restore(c);
}

} // namespace qm
