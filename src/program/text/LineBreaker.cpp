#include "program/text/LineBreaker.h"

#include "program/text/character_classes.h"

#include <algorithm>

extern "C" {
#include <linebreak.h>
#include <thai/thwbrk.h>
}

namespace qm {
namespace {

constexpr char32_t kFirstMark = 0x300;

bool is_thai(char32_t c) { return c >= 0xE01 && c <= 0xE5B; }

// Words stand side by side; a dictionary tells them apart. Without one, no line ends between them.
std::vector<std::size_t> words_in(const std::wstring& thai) {
    static ThBrk* dictionary = nullptr; // guarded by the renderer's lock
    if (!dictionary) dictionary = th_brk_new(nullptr);
    if (!dictionary) return {};
    std::vector<int> ends(thai.size());
    const int count = th_brk_wc_find_breaks(dictionary, thai.c_str(), ends.data(), ends.size());
    std::vector<std::size_t> inside;
    for (int i = 0; i < count; ++i) {
        const auto end = static_cast<std::size_t>(ends[static_cast<std::size_t>(i)]);
        if (end > 0 && end < thai.size()) inside.push_back(end);
    }
    return inside;
}

// Part by part, since the search takes the square of the length. What stands at the end of a part, which may
// cut a word, is looked at again with the next one.
void allow_breaks(const std::wstring& thai, char* breaks) {
    constexpr std::size_t kPart = 1000;
    for (std::size_t begin = 0; begin < thai.size();) {
        const std::wstring part = thai.substr(begin, kPart);
        std::vector<std::size_t> ends = words_in(part);
        const bool isLast = begin + part.size() == thai.size();
        if (!isLast && ends.size() > 1) ends.pop_back();
        for (const std::size_t end : ends) breaks[begin + end - 1] = LINEBREAK_ALLOWBREAK;
        begin += isLast || ends.empty() ? part.size() : ends.back();
    }
}

void allow_breaks_in_thai(std::u32string_view text, std::vector<char>& breaks) {
    for (auto begin = std::find_if(text.begin(), text.end(), is_thai); begin != text.end();) {
        const auto end = std::find_if_not(begin, text.end(), is_thai);
        allow_breaks({begin, end}, &breaks[static_cast<std::size_t>(begin - text.begin())]);
        begin = std::find_if(end, text.end(), is_thai);
    }
}

// For each character: may a line end behind it?
std::vector<char> break_opportunities(std::u32string_view text) {
    static const bool initialised = (init_linebreak(), true);
    (void)initialised;
    std::vector<char> breaks(text.size());
    std::vector<utf32_t> units(text.begin(), text.end());
    // These would end the process: libunibreak takes two for the end of a text, and knows no flags.
    const auto ends = [](utf32_t c) {
        return c == 0xFFFF || c == 0xFFFFFFFF || (c >= 0x1F1E6 && c <= 0x1F1FF);
    };
    std::replace_if(units.begin(), units.end(), ends, utf32_t{U'A'});
    set_linebreaks_utf32(units.data(), units.size(), "", breaks.data());
    allow_breaks_in_thai(text, breaks);
    return breaks;
}

// Adds clusters to one line after the other.
class Breaker {
  public:
    Breaker(ShapedText& text, int spacing, int width)
        : m_text(text), m_spacing(spacing), m_width(width), m_breaks(break_opportunities(text.text())) {}

    std::vector<TextLine> run() {
        while (m_next < m_text.size()) add_next();
        if (m_begin < m_text.size()) end_line(m_text.size(), m_text.size());
        return std::move(m_lines);
    }

  private:
    void add_next() {
        const char32_t c = m_text.character(m_next);
        if (c == U'\n') return end_line(m_next, m_next + 1);
        const GlyphShape& shape = m_text.shape(m_next);
        const bool backwards = m_text.runs_backwards(m_next);
        const int before = backwards ? shape.right - shape.advance : -shape.left;
        const int behind = backwards ? shape.advance - shape.left : shape.right;
        if (m_next == m_begin)
            m_pen = std::max(0, before);
        else
            m_pen = std::min(kFarthestPixel, m_pen + m_text.gap(m_next - 1, m_next, m_spacing));
        const bool fits = m_pen + std::max(shape.advance, behind) <= m_width;
        // A space at the end of a line takes no room.
        if (!fits && c != U' ' && m_next > m_begin) return break_before(m_next);
        m_pen = std::min(kFarthestPixel, m_pen + shape.advance);
        ++m_next;
        const bool hyphenFits = c != kSoftHyphen || m_pen + m_text.hyphen().advance <= m_width;
        if (hyphenFits && m_breaks[m_text.begin_of(m_next) - 1] == LINEBREAK_ALLOWBREAK) m_lastBreak = m_next;
    }

    void break_before(std::size_t overflowing) {
        const std::size_t at = m_text.part(m_lastBreak > m_begin ? m_lastBreak : overflowing);
        if (m_text.character(at - 1) == kSoftHyphen) m_text.show_hyphen(at - 1);
        end_line(at, at);
    }

    void end_line(std::size_t end, std::size_t next) {
        std::size_t last = end;
        while (last > m_begin && m_text.character(last - 1) == U' ') --last;
        m_lines.push_back({m_begin, last});
        m_begin = m_next = next;
        m_lastBreak = 0;
    }

    ShapedText& m_text;
    int m_spacing, m_width;
    std::vector<char> m_breaks;
    std::vector<TextLine> m_lines;
    std::size_t m_begin = 0, m_next = 0, m_lastBreak = 0;
    int m_pen = 0;
};

// The characters that always end a line.
bool is_line_end(char32_t c) { return (c >= U'\n' && c <= U'\r') || c == 0x85 || c == 0x2028 || c == 0x2029; }

void append(std::u32string& text, char32_t c) {
    const auto both = c < kFirstMark || text.empty() ? std::nullopt : composed(text.back(), c);
    if (both)
        text.back() = *both;
    else
        text += c;
}

} // namespace

std::u32string clean_text(std::u32string_view text, bool singleLine) {
    std::u32string clean;
    clean.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char32_t c = text[i];
        if (is_line_end(c)) {
            if (c == U'\r' && i + 1 < text.size() && text[i + 1] == U'\n') ++i;
            clean += singleLine ? U' ' : U'\n';
        } else if (c == U'\t') {
            clean += U' ';
        } else if (c >= 0x20 && c != 0x7F && c != 0xFEFF) {
            append(clean, c);
        }
    }
    return clean;
}

std::vector<TextLine> break_lines(ShapedText& text, int spacing, int width) {
    return Breaker(text, spacing, width).run();
}

} // namespace qm
