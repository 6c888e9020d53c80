// A digital clock laid out: every character that it may ever show, and the places where they appear.
#pragma once

#include "program/Font.h"
#include "program/TimeFormat.h"

namespace qm {

// What is to be shown. Groups are date, day of the week and time, as far as they are.
struct TimeText {
    std::vector<TimePieces> groups;
    Ouint32 weekStyle = Monday;
    bool severalLines = false;
    FontChoice font; // its size is the largest that is tried
    bool underline = false;
    Ouint8 align = 0; // of the lines in the area, and of names in their cells
};

// Characters or words that take turns in cells of one size.
struct GlyphSet {
    int width = 0;
    std::vector<std::vector<PlacedGlyph>> glyphs; // each from the left edge of its cell
};

// A piece of the text at the top left corner of its first cell; a number has a cell a digit.
struct PlacedUnit {
    TimeUnit unit;
    int x, y;
    Ouint8 set;
};

// All cells are equally high, and have a common baseline in them, so that lines do, too.
class TimeFontModel {
  public:
    // Lays the text out in an area. What does not fit is made smaller, then arranged in other lines; what is
    // outside even then is left out.
    TimeFontModel(const TimeText& text, int areaWidth, int areaHeight);

    [[nodiscard]] const std::vector<GlyphSet>& sets() const { return m_sets; }
    [[nodiscard]] const std::vector<PlacedUnit>& units() const { return m_units; }
    [[nodiscard]] int cell_height() const { return m_bottom - m_top; }
    // Draws a glyph with the context's colour, its cell's top left corner at (x, y).
    void draw(cairo_t* c, const GlyphSet& set, std::size_t glyph, int x, int y) const;

  private:
    using Line = TimePieces;

    bool fit(const TimeText& text, std::size_t lines);
    void measure(const TimeText& text, int size);
    GlyphSet measured_set(const std::vector<std::u16string>& texts, Ouint8 align);
    void add_vertical_extent(const std::vector<std::u16string>& texts);
    void add_underline(int size);
    void break_lines(const TimeText& text, std::size_t lines);
    [[nodiscard]] std::size_t set_of(const TimePiece& piece) const;
    [[nodiscard]] int width_of(const TimePiece& piece) const;
    [[nodiscard]] int width_of(const Line& line) const;
    [[nodiscard]] int widest_line() const;
    [[nodiscard]] int least_height() const;
    [[nodiscard]] bool shows(const TimePiece& piece) const;
    void cut_cells();
    void place(const TimeText& text);
    void place_line(const Line& line, Ouint8 align, int y);

    int m_areaWidth, m_areaHeight;
    std::shared_ptr<Font> m_font;
    int m_top = 0, m_bottom = 0; // of the cells around their baseline
    int m_underlineTop = 0, m_underline = 0;
    std::vector<TimePiece> m_kinds; // a piece that each set is for
    std::vector<GlyphSet> m_sets;
    std::vector<Line> m_lines;
    std::vector<PlacedUnit> m_units;
};

} // namespace qm
