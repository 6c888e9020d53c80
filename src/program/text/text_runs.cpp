#include "program/text/text_runs.h"

#include "program/text/character_classes.h"

namespace qm {
namespace {

hb_script_t script_of(char32_t c) { return hb_unicode_script(hb_unicode_funcs_get_default(), c); }

// Stands with any script.
bool is_shared(hb_script_t script) {
    return script == HB_SCRIPT_COMMON || script == HB_SCRIPT_INHERITED || script == HB_SCRIPT_UNKNOWN;
}

class Itemizer {
  public:
    Itemizer(std::u32string_view text, std::size_t begin, std::span<const Level> levels)
        : m_text(text), m_begin(begin), m_levels(levels) {}

    std::vector<TextRun> run() {
        for (std::size_t i = m_begin; i < m_begin + m_levels.size(); ++i) add(i);
        for (TextRun& run : m_runs)
            if (is_shared(run.script)) run.script = HB_SCRIPT_LATIN; // as good as any
        return std::move(m_runs);
    }

  private:
    void add(std::size_t i) {
        const char32_t c = m_text[i];
        const Level level = m_levels[i - m_begin];
        const bool tied = i > m_begin && continues(m_text[i - 1], c);
        m_tied = tied ? m_tied + 1 : 0;
        const bool plain = level % 2 == 0 && !tied && !needs_shaping(c);
        if (tied && m_tied % kLongestCluster != 0 && take_base(i, level)) return;
        const hb_script_t script = plain ? HB_SCRIPT_COMMON : script_of(c);
        if (m_tied > 0 || m_runs.empty() || !joins(m_runs.back(), level, plain, script))
            m_runs.push_back({i, i, level, script, plain});
        TextRun& run = m_runs.back();
        run.end = i + 1;
        if (is_shared(run.script)) run.script = script;
    }

    static bool joins(const TextRun& run, Level level, bool plain, hb_script_t script) {
        return run.level == level && run.plain == plain &&
               (run.script == script || is_shared(script) || is_shared(run.script));
    }

    // Adds a character to the run of the one before, which is no longer drawn by itself.
    bool take_base(std::size_t i, Level level) {
        TextRun& last = m_runs.back();
        if (last.level != level) return false;
        if (!last.plain) {
            last.end = i + 1;
            return true;
        }
        const hb_script_t script = script_of(m_text[i - 1]);
        if (--last.end == last.begin) m_runs.pop_back();
        m_runs.push_back({i - 1, i + 1, level, script, false});
        return true;
    }

    std::u32string_view m_text;
    std::size_t m_begin;
    std::span<const Level> m_levels;
    std::vector<TextRun> m_runs;
    std::size_t m_tied = 0; // characters that belong to the same one before
};

} // namespace

std::vector<TextRun> runs_of(std::u32string_view text, std::size_t begin, std::span<const Level> levels) {
    return Itemizer(text, begin, levels).run();
}

} // namespace qm
