#include "program/text/LineBreaker.h"

#include <algorithm>

extern "C" {
#include <linebreak.h>
}

namespace qm {
namespace {

// For each character: may a line end behind it?
std::vector<char> break_opportunities(std::u16string_view text) {
    static const bool initialised = (init_linebreak(), true);
    (void)initialised;
    std::vector<char> breaks(text.size());
    std::vector<utf16_t> units(text.begin(), text.end());
    // To libunibreak U+FFFF is the end of a text; in the middle of one it would end the process.
    std::replace(units.begin(), units.end(), utf16_t{0xFFFF}, utf16_t{0xFFFD});
    set_linebreaks_utf16(units.data(), units.size(), "", breaks.data());
    return breaks;
}

// Adds characters to one line after the other.
class Breaker {
  public:
    Breaker(std::u16string_view text, Font& font, int spacing, int width)
        : m_text(text), m_font(font), m_spacing(spacing), m_width(width),
          m_breaks(break_opportunities(text)) {}

    std::vector<TextLine> run() {
        while (m_next < m_text.size()) add_next();
        if (m_begin < m_text.size()) end_line(m_text.size(), m_text.size());
        return std::move(m_lines);
    }

  private:
    void add_next() {
        const char16_t c = m_text[m_next];
        if (c == u'\n') return end_line(m_next, m_next + 1);
        const GlyphShape& shape = m_font.shape(c);
        if (m_next == m_begin) m_pen = std::max(0, -shape.left);
        const bool fits = m_pen + std::max(shape.advance, shape.right) <= m_width;
        // A space at the end of a line takes no room.
        if (!fits && c != u' ' && m_next > m_begin) return break_before(m_next);
        m_pen = std::min(kFarthestPixel, m_pen + shape.advance + m_spacing);
        ++m_next;
        if (m_breaks[m_next - 1] == LINEBREAK_ALLOWBREAK) m_lastBreak = m_next;
    }

    void break_before(std::size_t overflowing) {
        const std::size_t at = m_lastBreak > m_begin ? m_lastBreak : overflowing;
        end_line(at, at);
    }

    void end_line(std::size_t end, std::size_t next) {
        std::size_t last = end;
        while (last > m_begin && m_text[last - 1] == u' ') --last;
        m_lines.push_back({m_begin, last});
        m_begin = m_next = next;
        m_lastBreak = 0;
    }

    std::u16string_view m_text;
    Font& m_font;
    int m_spacing, m_width;
    std::vector<char> m_breaks;
    std::vector<TextLine> m_lines;
    std::size_t m_begin = 0, m_next = 0, m_lastBreak = 0;
    int m_pen = 0;
};

// The characters that always end a line.
bool is_line_end(char16_t c) { return (c >= u'\n' && c <= u'\r') || c == 0x85 || c == 0x2028 || c == 0x2029; }

} // namespace

std::u16string clean_text(std::u16string_view text, bool singleLine) {
    std::u16string clean;
    clean.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (is_line_end(c)) {
            if (c == u'\r' && i + 1 < text.size() && text[i + 1] == u'\n') ++i;
            clean += singleLine ? u' ' : u'\n';
        } else if (c == u'\t') {
            clean += u' ';
        } else if (c >= 0x20 && c != 0x7F && c != 0xFEFF) {
            clean += c;
        }
    }
    return clean;
}

std::vector<TextLine> break_lines(std::u16string_view text, Font& font, int spacing, int width) {
    return Breaker(text, font, spacing, width).run();
}

LineExtent measure_line(std::u16string_view line, Font& font, int spacing) {
    int pen = 0, left = 0, right = 0;
    for (const char16_t c : line) {
        if (pen > kFarthestPixel) break;
        const GlyphShape& shape = font.shape(c);
        left = std::min(left, pen + shape.left);
        right = std::max({right, pen + shape.advance, pen + shape.right});
        pen += shape.advance + spacing;
    }
    return {-left, right - left};
}

} // namespace qm
