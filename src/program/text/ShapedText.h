// A text as glyphs, in the order of reading.
#pragma once

#include "program/text/Font.h"

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
    Ouint32 begin; // its first character
};

class ShapedText {
  public:
    // The text is ready for layout (clean_text). The clusters refer to the font's shapes.
    ShapedText(std::u32string text, Font& font);

    [[nodiscard]] const std::u32string& text() const { return m_text; }
    [[nodiscard]] std::size_t size() const { return m_clusters.size(); }
    [[nodiscard]] const GlyphShape& shape(std::size_t cluster) const { return *m_clusters[cluster].shape; }
    // The first character of a cluster; behind the last one, the end of the text.
    [[nodiscard]] std::size_t begin_of(std::size_t cluster) const {
        return cluster < m_clusters.size() ? m_clusters[cluster].begin : m_text.size();
    }
    [[nodiscard]] char32_t character(std::size_t cluster) const { return m_text[m_clusters[cluster].begin]; }

    // Gives each shape of a line, which contains no line end, and where it stands with pixels between the
    // clusters, from left to right.
    template <class Take> void place(const TextLine& line, int x, int spacing, Take take) const {
        for (std::size_t i = line.begin; i < line.end && x <= kFarthestPixel; ++i) {
            take(shape(i), x);
            x += shape(i).advance + spacing;
        }
    }

    [[nodiscard]] LineExtent measure(const TextLine& line, int spacing) const;

  private:
    std::u32string m_text;
    std::vector<Cluster> m_clusters;
};

} // namespace qm
