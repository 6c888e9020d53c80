#include "program/text/ShapedText.h"

#include <algorithm>

namespace qm {

ShapedText::ShapedText(std::u32string text, Font& font) : m_text(std::move(text)) {
    static const GlyphShape lineEnd;
    m_clusters.reserve(m_text.size());
    for (const char32_t c : m_text)
        m_clusters.push_back(
            {c == U'\n' ? &lineEnd : &font.shape(c), static_cast<Ouint32>(m_clusters.size())});
}

LineExtent ShapedText::measure(const TextLine& line, int spacing) const {
    int left = 0, right = 0;
    place(line, 0, spacing, [&](const GlyphShape& shape, int x) {
        left = std::min(left, x + shape.left);
        right = std::max({right, x + shape.advance, x + shape.right});
    });
    return {-left, right - left};
}

} // namespace qm
