#include "program/text/TextLayout.h"

#include "program/text/LineBreaker.h"
#include "program/text/alignment.h"
#include "program/text/line_spacing.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace qm {
namespace {

// What the clusters of a line light, and whether bitmaps are among them.
LineInk ink_of(const ShapedText& text, const TextLine& line, const Font& font) {
    LineInk ink{std::numeric_limits<int>::max(), std::numeric_limits<int>::min()};
    const GlyphShape* last = nullptr;
    for (std::size_t i = line.begin; i < line.end; ++i) {
        const GlyphShape& shape = text.shape(i);
        if (shape.blank()) continue;
        ink.top = std::min(ink.top, shape.top);
        ink.bottom = std::max(ink.bottom, shape.bottom);
        if (!last || shape.face != last->face) ink.cell = std::max(ink.cell, font.face_of(shape).strike());
        last = &shape;
    }
    return ink.top < ink.bottom ? ink : LineInk{};
}

// One that goes up, and one that goes down.
LineInk letters_of(Font& font) { return {font.shape(U'd').top, font.shape(U'p').bottom}; }

class Layout {
  public:
    Layout(std::u32string_view text, Font& font, const qm_G5_G6_fontData& style, const LayoutFrame& frame)
        : m_singleLine(style.arrMode == SINGLELINE),
          m_text(clean_text(text, m_singleLine), font, style.tdirection == eVertical), m_font(font),
          m_style(style), m_frame(frame),
          m_ink(ink_of(m_text, {0, m_text.size()}, font)), m_rows{font.ascent(), font.line_height(),
                                                                  letters_of(font)} {}

    TextPages run() {
        m_out.glyphs.reserve(m_text.size());
        if (m_style.tdirection == eVertical)
            set_columns();
        else if (m_singleLine && m_frame.running != Running::no)
            set_strip();
        else
            set_lines();
        if (as_played()) std::reverse(m_out.pages.begin(), m_out.pages.end());
        if (!m_out.pages.empty()) m_out.endPageLen = last_page().validWidth;
        m_out.shapes = m_text.take_shapes();
        return std::move(m_out);
    }

  private:
    // Whether the pages are listed from the end of the text on.
    [[nodiscard]] bool as_played() const {
        return m_singleLine && m_frame.running == Running::right && m_frame.order == PageOrder::playing;
    }

    // The page that is played last.
    [[nodiscard]] const TextPage& last_page() const {
        const bool writtenLastFirst =
            m_frame.running == Running::right && m_frame.order == PageOrder::reading;
        return writtenLastFirst ? m_out.pages.front() : m_out.pages.back();
    }

    // Of a line that is alone on its page: the same on all pages of a text.
    [[nodiscard]] int baseline() const {
        return baselines({&m_ink, 1}, m_frame.height, m_rows, m_style.Valign).front();
    }

    // A line that lights nothing takes the room of the others.
    [[nodiscard]] std::vector<LineInk> inks_of(std::span<const TextLine> lines) const {
        std::vector<LineInk> inks;
        for (const TextLine& line : lines) {
            const LineInk ink = ink_of(m_text, line, m_font);
            inks.push_back(ink.top < ink.bottom ? ink : m_ink);
        }
        return inks;
    }

    void add(const TextPage& page) {
        if (m_out.pages.size() == kMostPages) throw std::length_error("too many pages");
        m_out.pages.push_back(page);
    }

    void place(const GlyphShape& shape, int x, int y) {
        if (!shape.blank()) m_out.glyphs.push_back({&shape, x, y});
    }

    void place_line(const TextLine& line, int x, int y) {
        m_text.place(line, x, m_style.txtSpace,
                     [&](const GlyphShape& shape, int at) { place(shape, at, y); });
    }

    void set_lines() {
        const std::vector<TextLine> lines = break_lines(m_text, m_style.txtSpace, m_frame.width);
        const std::vector<LineInk> inks = inks_of(lines);
        for (std::size_t i = 0, count = 0; i < lines.size(); i += count) {
            count = m_singleLine ? 1 : lines_that_fit(std::span(inks).subspan(i), m_frame.height);
            set_page(std::span(lines).subspan(i, count), std::span(inks).subspan(i, count));
        }
    }

    void set_page(std::span<const TextLine> lines, std::span<const LineInk> inks) {
        const std::size_t first = m_out.glyphs.size();
        const std::vector<int> places = inks.size() == 1
                                            ? std::vector{baseline()}
                                            : baselines(inks, m_frame.height, m_rows, m_style.Valign);
        int right = 0;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            const LineExtent extent = m_text.measure(lines[i], m_style.txtSpace);
            const int x = get_x_area(m_style.Halign, m_frame.width, extent.width);
            place_line(lines[i], x + extent.start, places[i]);
            right = std::max(right, x + extent.width);
        }
        add({first, m_out.glyphs.size() - first, 0, std::min(right, m_frame.width)});
    }

    // One strip of text, cut every area width from the end that comes in first, so that the odd piece is at
    // the other end. A strip that fits the area is aligned in it, unless its page has to be full.
    void set_strip() {
        const TextLine all{0, m_text.size()};
        const LineExtent extent = m_text.measure(all, m_style.txtSpace);
        if (extent.width == 0) return;
        const int x = get_x_area(m_style.Halign, m_frame.width, extent.width);
        place_line(all, x + extent.start, baseline());
        const int end = x + extent.width, width = m_frame.width;
        m_reach = farthest_ink();
        const int missing = m_frame.running == Running::right ? (width - end % width) % width : 0;
        for (int cut = -missing; cut < end; cut += width) {
            const int from = as_played() ? cut : std::max(cut, 0);
            add_piece(from, std::min(cut + width, end) - from);
        }
    }

    // From an origin, that ink may reach.
    [[nodiscard]] int farthest_ink() const {
        int farthest = 2 * m_font.line_height();
        for (const PlacedGlyph& glyph : m_out.glyphs)
            farthest = std::max({farthest, -glyph.shape->left, glyph.shape->right});
        return farthest;
    }

    // The page that shows the strip from column from on. Ink may reach over the origins of its neighbours.
    void add_piece(int from, int width) {
        const auto before = [](const PlacedGlyph& glyph, int x) { return glyph.x < x; };
        const auto begin = m_out.glyphs.begin(), end = m_out.glyphs.end();
        const auto first = std::lower_bound(begin, end, from - m_reach, before);
        const auto last = std::lower_bound(first, end, from + width + m_reach, before);
        add({static_cast<std::size_t>(first - begin), static_cast<std::size_t>(last - first), -from, width});
    }

    // Characters stacked into columns, columns from left to right; single line is one column a page.
    void set_columns() {
        const std::size_t perColumn = characters_that_fit();
        std::vector<TextLine> columns;
        for (std::size_t begin = 0; begin < m_text.size();) {
            std::size_t end = begin;
            const auto more = [&] { return end < m_text.size() && m_text.character(end) != U'\n'; };
            while (more() && end - begin < perColumn) ++end;
            columns.push_back({begin, end});
            while (more() && m_text.character(end) == U' ') ++end;
            begin = more() ? end : end + 1;
        }
        const int pitch = widest_advance();
        const auto perPage = static_cast<std::size_t>(m_singleLine ? 1 : std::max(1, m_frame.width / pitch));
        for (std::size_t i = 0; i < columns.size(); i += perPage)
            set_column_page(std::span(columns).subspan(i, std::min(perPage, columns.size() - i)), pitch);
    }

    // Characters stand in a column as lines do on a page, with the wanted pixels between them.
    [[nodiscard]] std::vector<int> places_of(std::size_t count) const {
        const int spaces = static_cast<int>(count - 1) * m_style.txtSpace;
        std::vector<int> places = baselines(std::vector(count, m_ink), std::max(1, m_frame.height - spaces),
                                            m_rows, m_style.Valign);
        for (std::size_t i = 0; i < count; ++i) places[i] += static_cast<int>(i) * m_style.txtSpace;
        return places;
    }

    // In a column, at least one.
    [[nodiscard]] std::size_t characters_that_fit() const {
        const int height = m_frame.height, spacing = m_style.txtSpace;
        const int close = 1 + (height - (m_ink.bottom - m_ink.top)) / (closest(m_ink, m_ink) + spacing);
        return static_cast<std::size_t>(std::max(1, close));
    }

    void set_column_page(std::span<const TextLine> columns, int pitch) {
        const std::size_t first = m_out.glyphs.size();
        const int width = static_cast<int>(columns.size()) * pitch;
        const int left = get_x_area(m_style.Halign, m_frame.width, width);
        std::size_t longest = 1;
        for (const TextLine& column : columns) longest = std::max(longest, column.end - column.begin);
        const std::vector<int> places = places_of(longest);
        for (std::size_t i = 0; i < columns.size(); ++i)
            place_column(columns[i], left + static_cast<int>(i) * pitch, pitch, places);
        add({first, m_out.glyphs.size() - first, 0, std::min(left + width, m_frame.width)});
    }

    void place_column(const TextLine& column, int x, int pitch, const std::vector<int>& places) {
        if (column.begin == column.end) return;
        const auto room = [&](std::size_t last) { return places[last] - places.front(); };
        const int down =
            get_x_area(m_style.Valign, room(places.size() - 1), room(column.end - column.begin - 1));
        for (std::size_t i = column.begin; i < column.end; ++i) {
            const GlyphShape& shape = m_text.shape(i);
            place(shape, x + get_x_area(1, pitch, shape.advance), down + places[i - column.begin]);
        }
    }

    int widest_advance() {
        int widest = 1;
        for (std::size_t i = 0; i < m_text.size(); ++i) widest = std::max(widest, m_text.shape(i).advance);
        return widest;
    }

    bool m_singleLine;
    ShapedText m_text;
    Font& m_font;
    const qm_G5_G6_fontData& m_style;
    LayoutFrame m_frame;
    LineInk m_ink;   // of all lines
    int m_reach = 0; // of the ink of a strip
    FontRows m_rows;
    TextPages m_out;
};

} // namespace

Running running_of(Ouint8 displayMode) {
    if (displayMode == 4) return Running::left;
    return displayMode == 38 || displayMode == 40 ? Running::right : Running::no;
}

TextPages lay_out(std::u32string_view text, Font& font, const qm_G5_G6_fontData& style,
                  const LayoutFrame& frame) {
    return Layout(text, font, style, frame).run();
}

} // namespace qm
