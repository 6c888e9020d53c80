// A digital clock laid out: every character that it may ever show, and the places where they appear.
#pragma once

#include "program/GlyphSet.h"
#include "program/TimeFormat.h"

namespace qm {

// What is to be shown: groups in this order, empty ones not at all.
struct TimeText {
    TimePieces date, week, time;
    TimePieces minutes, hours; // the time in less room
    Ouint32 weekStyle = Monday;
    bool severalLines = false;
    FontChoice font; // its size is the largest that is tried
    bool underline = false;
    Ouint8 align = 0; // of the lines in the area, and of names in their cells
};

// A piece of the text at the top left corner of its first cell; a number has a cell a digit.
struct PlacedUnit {
    TimeUnit unit;
    int x, y;
    Ouint8 set;
};

// Lines have a common baseline, and are as high as what they may ever show.
class TimeFontModel {
  public:
    // Lays the text out in an area. What does not fit is made smaller, then arranged in other lines, then
    // left out. A group is there as a whole, on several lines where it is alone, or not at all; but for the
    // time, for which all others make way: where it does not fit either, hour and minute may do, or the hour.
    TimeFontModel(const TimeText& text, int areaWidth, int areaHeight);

    [[nodiscard]] const std::vector<GlyphSet>& sets() const { return m_sets; }
    [[nodiscard]] const std::vector<PlacedUnit>& units() const { return m_units; }
    // Draws a glyph with the context's colour, its cell's top left corner at (x, y).
    void draw(cairo_t* c, const GlyphSet& set, std::size_t glyph, int x, int y) const;

  private:
    struct Line {
        std::vector<TimePieces> groups;
        int top = 0, bottom = 0; // around the baseline

        [[nodiscard]] int height() const { return bottom - top; }
    };

    bool fit_anything();
    bool fit_with(const TimePieces& time);
    bool fit(std::initializer_list<TimePieces> groups);
    bool fit_broken(const TimePieces& group);
    bool fit_on_lines(std::size_t lines);
    void measure(int size);
    [[nodiscard]] GlyphSet set_for(const TimePiece& kind) const;
    void add_underline(int size);
    void break_lines(std::size_t lines);
    [[nodiscard]] Line line_of(std::span<const TimePieces> groups) const;
    [[nodiscard]] std::size_t set_of(const TimePiece& piece) const;
    [[nodiscard]] int width_of(const TimePiece& piece) const;
    [[nodiscard]] int width_of(const TimePieces& pieces) const;
    [[nodiscard]] int width_of(const Line& line) const;
    [[nodiscard]] int widest_line() const;
    [[nodiscard]] int height_of_lines() const;
    [[nodiscard]] bool shows(const TimePiece& piece) const;
    void place();
    void place_line(const Line& line, int baseline);

    TimeText m_text;
    int m_areaWidth, m_areaHeight;
    std::vector<TimePieces> m_groups; // that are tried
    bool m_spaced = true;             // groups on a line have a space between them
    FontChoice m_choice;
    std::shared_ptr<Font> m_font;
    int m_underlineTop = 0, m_underline = 0;
    std::vector<TimePiece> m_kinds; // for each set a piece that it is for
    std::vector<GlyphSet> m_sets;
    std::vector<Line> m_lines;
    std::vector<PlacedUnit> m_units;
};

} // namespace qm
