#include "simulator/playback/ProgramPlayer.h"

#include "simulator/playback/BorderPattern.h"

#include <algorithm>

namespace qm::sim {
namespace {

using std::chrono::days;
using std::chrono::seconds;

seconds time_of_day(LocalSeconds clock) { return clock - std::chrono::floor<days>(clock); }

bool holds(const PlayPeriod& period, seconds time) {
    if (period.first <= period.last) return period.first <= time && time <= period.last;
    return period.first <= time || time <= period.last;
}

Milliseconds turn_of(const ProgramPlayer& player) {
    const ProgramHeader& header = player.program().header;
    if (header.style != 0) return seconds(std::max<int>(1, header.time_span));
    return player.once() * std::max<int>(1, header.play_times);
}

} // namespace

ProgramPlayer::ProgramPlayer(StoredProgram program, const ScreenShape& screen)
    : m_program(std::move(program)), m_screen(screen) {
    for (const ProgramArea& area : m_program.areas)
        m_timelines.emplace_back(area.pages, area.inside(), screen.format);
}

bool ProgramPlayer::plays_at(LocalSeconds clock) const {
    const auto now = [time = time_of_day(clock)](const PlayPeriod& period) { return holds(period, time); };
    return m_program.periods.empty() || std::any_of(m_program.periods.begin(), m_program.periods.end(), now);
}

std::optional<Milliseconds> ProgramPlayer::until_period(LocalSeconds clock) const {
    std::optional<Milliseconds> soonest;
    for (const PlayPeriod& period : m_program.periods)
        for (const seconds edge : {period.first, period.last + seconds(1)}) {
            const seconds wait = (edge - time_of_day(clock) + 2 * days(1)) % days(1);
            soonest = sooner(soonest, wait == seconds(0) ? days(1) : wait);
        }
    return soonest;
}

Milliseconds ProgramPlayer::once() const {
    Milliseconds longest = seconds(1);
    for (const Timeline& timeline : m_timelines) longest = std::max(longest, timeline.once());
    return longest;
}

Image ProgramPlayer::picture(Milliseconds into_turn, const Moment& now) const {
    Image image(m_screen.width, m_screen.height);
    for (const bool background : {true, false})
        for (std::size_t i = 0; i < m_timelines.size(); ++i) {
            const ProgramArea& area = m_program.areas[i];
            if ((area.type == AreaType::background) != background) continue;
            m_timelines[i].draw(image, into_turn);
            if (area.clock) draw(image, m_screen.format, *area.clock, area.rect, now);
            if (area.border) draw(image, m_screen.format, *area.border, area.rect, into_turn);
        }
    if (m_program.border) draw(image, m_screen.format, *m_program.border, m_screen.whole(), into_turn);
    return image;
}

std::optional<Milliseconds> ProgramPlayer::next_picture(Milliseconds into_turn) const {
    std::optional<Milliseconds> soonest;
    for (const Timeline& timeline : m_timelines) soonest = sooner(soonest, timeline.next_change(into_turn));
    for (const ProgramArea& area : m_program.areas) {
        if (area.border) soonest = sooner(soonest, next_change(*area.border, into_turn));
        if (area.clock) soonest = sooner(soonest, into_turn - into_turn % kClockStep + kClockStep);
    }
    if (m_program.border) soonest = sooner(soonest, next_change(*m_program.border, into_turn));
    return soonest;
}

void Playlist::put(const std::string& name, StoredProgram program) {
    m_players[name] = std::make_unique<const ProgramPlayer>(std::move(program), m_screen);
}

Playlist::Turn Playlist::turn_at(const Moment& now) const {
    if (now.locked) return {m_players.find(*now.locked), Milliseconds{0}, std::nullopt};
    std::vector<Players::const_iterator> waiting;
    Milliseconds round{0};
    for (auto player = m_players.begin(); player != m_players.end(); ++player)
        if (player->second->plays_at(now.clock)) {
            waiting.push_back(player);
            round += turn_of(*player->second);
        }
    if (waiting.empty()) return {m_players.end(), Milliseconds{0}, std::nullopt};
    if (waiting.size() == 1) return {waiting.front(), Milliseconds{0}, std::nullopt};
    Milliseconds begin = now.played - now.played % round;
    for (const auto player : waiting) {
        const Milliseconds end = begin + turn_of(*player->second);
        if (now.played < end) return {player, begin, end};
        begin = end;
    }
    return {m_players.end(), Milliseconds{0}, std::nullopt};
}

Image Playlist::screen(const Moment& now) const {
    const Turn turn = turn_at(now);
    if (turn.player == m_players.end()) return {m_screen.width, m_screen.height};
    return turn.player->second->picture(now.played - turn.since, now);
}

std::optional<Milliseconds> Playlist::next_change(const Moment& now) const {
    const Turn turn = turn_at(now);
    std::optional<Milliseconds> soonest = turn.end;
    if (turn.player != m_players.end())
        if (const auto next = turn.player->second->next_picture(now.played - turn.since))
            soonest = sooner(soonest, turn.since + *next);
    if (now.locked) return soonest;
    for (const auto& [name, player] : m_players)
        if (const auto wait = player->until_period(now.clock)) soonest = sooner(soonest, now.played + *wait);
    return soonest;
}

std::string Playlist::next(const Moment& now) const {
    const Turn turn = turn_at(now);
    if (!turn.end) return {};
    return playing({*turn.end, now.clock + std::chrono::floor<seconds>(*turn.end - now.played)});
}

std::vector<Rect> Playlist::areas(const Moment& now) const {
    std::vector<Rect> rects;
    const Turn turn = turn_at(now);
    if (turn.player == m_players.end()) return rects;
    for (const ProgramArea& area : turn.player->second->program().areas) rects.push_back(area.rect);
    return rects;
}

std::string Playlist::playing(const Moment& now) const {
    const Turn turn = turn_at(now);
    return turn.player == m_players.end() ? "" : turn.player->first;
}

} // namespace qm::sim
