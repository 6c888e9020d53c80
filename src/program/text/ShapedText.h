// A text as glyphs, in the order of reading.
#pragma once

#include "program/text/Font.h"

#include <algorithm>
#include <string>
#include <vector>

namespace qm {

// A stretch of clusters, its end outside.
struct TextLine {
    std::size_t begin, end;
};

// The room of a line: the shift that keeps its first glyph's overhang inside, and its width with it.
struct LineExtent {
    int start, width;
};

// No line reaches farther; what is left of it is not shown. Keeps positions within an int.
constexpr int kFarthestPixel = 1 << 30;

// Characters that are drawn together and never parted, most often a single one.
struct Cluster {
    const GlyphShape* shape;
    Ouint32 begin;       // its first character
    Level level = 0;     // of its direction
    Level paragraph = 0; // and of its paragraph's
    bool joined = false; // to the one before, so that no room may be added between them
    bool unsafe = false; // to break a line before it without shaping again
};

class ShapedText {
  public:
    // The text is ready for layout (clean_text). The clusters refer to the font's shapes, in columns to those
    // for them.
    ShapedText(std::u32string text, Font& font, bool inColumns = false);

    [[nodiscard]] const std::u32string& text() const { return m_text; }
    [[nodiscard]] std::size_t size() const { return m_clusters.size(); }
    [[nodiscard]] const GlyphShape& shape(std::size_t cluster) const { return *m_clusters[cluster].shape; }
    // The first character of a cluster; behind the last one, the end of the text.
    [[nodiscard]] std::size_t begin_of(std::size_t cluster) const {
        return cluster < m_clusters.size() ? m_clusters[cluster].begin : m_text.size();
    }
    [[nodiscard]] char32_t character(std::size_t cluster) const { return m_text[m_clusters[cluster].begin]; }

    [[nodiscard]] bool runs_backwards(std::size_t cluster) const {
        return m_clusters[cluster].level % 2 != 0;
    }

    // Lets a line begin with a cluster: where that hangs together with the one before, both sides are shaped
    // again. Gives its number, which may change, as may all behind it; those of lines before do not.
    std::size_t part(std::size_t cluster);

    // Shows a soft hyphen, which ends a line.
    void show_hyphen(std::size_t cluster) { m_clusters[cluster].shape = &hyphen(); }
    [[nodiscard]] const GlyphShape& hyphen() { return m_font.shape(U'-'); }

    // The room between two clusters that stand side by side, of the pixels that are put between clusters.
    [[nodiscard]] int gap(std::size_t one, std::size_t other, int spacing) const {
        const auto [former, latter] = std::minmax(one, other);
        return latter - former == 1 && m_clusters[latter].joined ? 0 : spacing;
    }

    // Gives each shape of a line, which contains no line end, and where it stands with pixels between the
    // clusters, from left to right.
    template <class Take> void place(const TextLine& line, int x, int spacing, Take take) const {
        const std::vector<Ouint32> order = m_turns ? order_of(line) : std::vector<Ouint32>();
        std::size_t last = line.begin;
        for (std::size_t n = 0; n < line.end - line.begin && x <= kFarthestPixel; ++n) {
            const std::size_t next = line.begin + (m_turns ? order[n] : n);
            if (n > 0) x += gap(last, next, spacing);
            take(shape(next), x);
            x += shape(next).advance;
            last = next;
        }
    }

    [[nodiscard]] LineExtent measure(const TextLine& line, int spacing) const;

    // The shapes that live no longer than the text unless somebody else keeps them.
    [[nodiscard]] std::vector<std::shared_ptr<const GlyphShape>> take_shapes() { return std::move(m_shapes); }

  private:
    // What was shaped at once.
    struct ShapedRun {
        TextRun run;
        Level paragraph;
        unsigned face;
    };

    void add_paragraph(std::size_t begin, std::size_t end);
    void add_plain(const TextRun& run);
    void add_run(const TextRun& run);
    void add_by_clusters(const TextRun& run);
    void add_shaped(const TextRun& run, unsigned face);
    void shape_run(const TextRun& run, unsigned face);
    [[nodiscard]] const ShapedRun& run_of(std::size_t cluster) const;
    void add_cluster(const TextRun& run, unsigned face, std::span<const ShapedGlyph> glyphs);
    // The clusters of a line from left to right, counted from its begin.
    [[nodiscard]] std::vector<Ouint32> order_of(const TextLine& line) const;

    std::u32string m_text;
    Font& m_font;
    bool m_inColumns;
    std::vector<Cluster> m_clusters;
    std::vector<ShapedRun> m_runs;                           // in the order of reading
    std::vector<std::shared_ptr<const GlyphShape>> m_shapes; // of clusters that were shaped
    Level m_paragraph = 0;                                   // of the paragraph that is being added
    bool m_turns = false;                                    // something runs from right to left
};

} // namespace qm
