#include "program/text/ShapedText.h"

#include "program/text/character_classes.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace qm {
namespace {

// Letters of these scripts join where the shaper says so.
bool is_cursive(hb_script_t script) {
    return script == HB_SCRIPT_ARABIC || script == HB_SCRIPT_SYRIAC || script == HB_SCRIPT_MONGOLIAN ||
           script == HB_SCRIPT_NKO || script == HB_SCRIPT_MANDAIC;
}

// All letters of a word of these scripts hang from one line.
bool has_headline(hb_script_t script) {
    return script == HB_SCRIPT_DEVANAGARI || script == HB_SCRIPT_BENGALI || script == HB_SCRIPT_GURMUKHI;
}

// How far a line's end reaches into what was shaped at once, in clusters.
constexpr std::size_t kReach = 32;

const GlyphShape kNothing; // of a line end, or a hyphen that is not shown

using Glyphs = std::span<const ShapedGlyph>;

void replace(std::vector<Cluster>& all, std::size_t first, std::size_t last, const std::vector<Cluster>& by) {
    const auto begin = all.begin() + static_cast<std::ptrdiff_t>(first);
    const std::size_t common = std::min(last - first, by.size());
    const auto end = std::copy_n(by.begin(), common, begin);
    if (common < by.size())
        all.insert(end, by.begin() + static_cast<std::ptrdiff_t>(common), by.end());
    else
        all.erase(end, all.begin() + static_cast<std::ptrdiff_t>(last));
}

} // namespace

ShapedText::ShapedText(std::u32string text, Font& font, bool inColumns)
    : m_text(std::move(text)), m_font(font), m_inColumns(inColumns) {
    m_clusters.reserve(m_text.size());
    for (std::size_t begin = 0; begin < m_text.size(); ++begin) {
        const std::size_t end = std::min(m_text.find(U'\n', begin), m_text.size());
        add_paragraph(begin, end);
        if (end < m_text.size()) m_clusters.push_back({&kNothing, static_cast<Ouint32>(end)});
        begin = end;
    }
}

void ShapedText::add_paragraph(std::size_t begin, std::size_t end) {
    const auto paragraph = std::u32string_view(m_text).substr(begin, end - begin);
    if (std::none_of(paragraph.begin(), paragraph.end(), needs_shaping))
        return add_plain({begin, end, 0, HB_SCRIPT_COMMON, true});
    const ParagraphLevels levels =
        m_inColumns ? ParagraphLevels{0, std::vector<Level>(paragraph.size())} : embedding_levels(paragraph);
    m_paragraph = levels.paragraph;
    m_turns = m_turns || std::any_of(levels.levels.begin(), levels.levels.end(), std::identity());
    for (const TextRun& run : runs_of(m_text, begin, levels.levels))
        run.plain ? add_plain(run) : add_run(run);
    m_paragraph = 0;
}

void ShapedText::add_plain(const TextRun& run) {
    for (std::size_t i = run.begin; i < run.end; ++i) {
        const char32_t c = m_text[i];
        const bool hidden = c == kSoftHyphen; // until a line ends with it
        if (hidden && m_inColumns) continue;
        const GlyphShape* shape = &kNothing;
        if (!hidden) shape = m_inColumns ? &m_font.vertical(c) : &m_font.shape(c);
        m_clusters.push_back({shape, static_cast<Ouint32>(i), run.level, m_paragraph, hidden, false});
    }
}

void ShapedText::add_run(const TextRun& run) {
    const auto characters = std::u32string_view(m_text).substr(run.begin, run.end - run.begin);
    if (const auto face = m_inColumns ? std::nullopt : m_font.face_with(characters))
        add_shaped(run, *face);
    else
        add_by_clusters(run);
}

// No font has all of the run, or it stands in a column: each part takes the first one that has as much as is
// drawn together. In columns letters stand one by one, unjoined.
void ShapedText::add_by_clusters(const TextRun& run) {
    TextRun part = run;
    part.alone = m_inColumns;
    std::optional<unsigned> face;
    const auto add = [&] { face ? add_shaped(part, *face) : add_plain(part); };
    for (std::size_t begin = run.begin, end = begin; begin < run.end; begin = end) {
        do ++end;
        while (end < run.end && continues(m_text[end - 1], m_text[end]));
        const auto found = m_font.face_with(std::u32string_view(m_text).substr(begin, end - begin));
        if (begin > run.begin && (m_inColumns || found != face)) {
            add();
            part.begin = begin;
        }
        part.end = end;
        face = found;
    }
    add();
}

void ShapedText::add_shaped(const TextRun& run, unsigned face) {
    m_runs.push_back({run, m_paragraph, face});
    shape_run(run, face);
}

// Glyphs come from left to right; clusters are in the order of reading.
void ShapedText::shape_run(const TextRun& run, unsigned face) {
    const bool backwards = run.level % 2 != 0;
    const auto next = [&](const Glyphs& left) { return (backwards ? left.back() : left.front()).character; };
    for (Glyphs left = m_font.shape(face, m_text, run); !left.empty();) {
        const Glyphs all = left;
        const Ouint32 begin = next(left);
        const auto belongs = [&](Ouint32 c) {
            return c == begin || (c - begin < kLongestCluster && continues(m_text[c - 1], m_text[c]));
        };
        for (Ouint32 c = begin; !left.empty() && (next(left) == c || belongs(next(left)));
             left = backwards ? left.first(left.size() - 1) : left.subspan(1))
            c = next(left);
        add_cluster(run, face, backwards ? all.subspan(left.size()) : all.first(all.size() - left.size()));
    }
}

void ShapedText::add_cluster(const TextRun& run, unsigned face, std::span<const ShapedGlyph> glyphs) {
    const bool backwards = run.level % 2 != 0;
    const ShapedGlyph& first = backwards ? glyphs.back() : glyphs.front();
    m_shapes.push_back(m_font.cluster(face, glyphs));
    const char32_t c = m_text[first.character];
    const bool behindLetter = first.character > run.begin && is_letter(m_text[m_clusters.back().begin]);
    const bool joins = has_headline(run.script) || (is_cursive(run.script) && first.unsafe);
    m_clusters.push_back({m_shapes.back().get(), first.character, run.level, m_paragraph,
                          is_ignorable(c) || (joins && behindLetter && is_letter(c)), first.unsafe});
}

const ShapedText::ShapedRun& ShapedText::run_of(std::size_t cluster) const {
    const auto begins_behind = [](std::size_t c, const ShapedRun& shaped) { return c < shaped.run.begin; };
    return *std::prev(std::upper_bound(m_runs.begin(), m_runs.end(), begin_of(cluster), begins_behind));
}

std::size_t ShapedText::part(std::size_t cluster) {
    if (cluster >= size() || !m_clusters[cluster].unsafe) return cluster;
    const ShapedRun& shaped = run_of(cluster);
    std::size_t first = cluster, last = cluster + 1;
    while (m_clusters[first].unsafe && cluster - first < kReach) --first;
    while (last < size() && m_clusters[last].unsafe && last - cluster < kReach) ++last;
    TextRun head = shaped.run, tail = shaped.run;
    head.begin = begin_of(first);
    head.end = tail.begin = begin_of(cluster);
    tail.end = begin_of(last);
    std::vector<Cluster> all = std::exchange(m_clusters, {});
    m_paragraph = shaped.paragraph;
    shape_run(head, shaped.face);
    const std::size_t parted = first + m_clusters.size();
    shape_run(tail, shaped.face);
    m_clusters.front().joined = all[first].joined;
    m_clusters.front().unsafe = all[first].unsafe;
    replace(all, first, last, m_clusters);
    m_clusters = std::move(all);
    return parted;
}

std::vector<Ouint32> ShapedText::order_of(const TextLine& line) const {
    std::vector<Level> levels;
    levels.reserve(line.end - line.begin);
    for (std::size_t i = line.begin; i < line.end; ++i) levels.push_back(m_clusters[i].level);
    for (std::size_t i = line.end; i > line.begin && is_bidi_space(character(i - 1)); --i)
        levels[i - 1 - line.begin] = m_clusters[i - 1].paragraph;
    return visual_order(levels);
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
