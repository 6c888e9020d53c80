// The programs among a controller's files, taken up as they arrive.
#pragma once

#include "simulator/controller/FileSystem.h"
#include "simulator/playback/ProgramPlayer.h"

namespace qm::sim {

// A program is an ordinary file of type 0 named P000 to P999 or 1000 to 9999, in generation 6 together with
// the data file that has D in the place of its first character; without that one it waits.
class Programs {
  public:
    // What is wrong with a program, by its name.
    using Errors = std::map<std::string, std::string>;

    Programs(Generation generation, const ScreenShape& screen)
        : m_generation(generation), m_format(screen.format), m_list(screen) {}

    // Takes up what has changed since the last time, unless a transfer is going on. When programs have come
    // or gone, all of them begin anew. Gives what became of them in words, empty when nothing has changed.
    std::string update(const FileSystem& files, Milliseconds now);
    void restart(Milliseconds now) { m_since = now; }

    // Those that cannot be played, too.
    [[nodiscard]] std::size_t count() const { return m_known.size(); }
    [[nodiscard]] const Errors& errors() const { return m_errors; }
    // Here and below, moments are given as time since the controller was switched on.
    [[nodiscard]] Image screen(const Moment& now) const { return m_list.screen(in_list(now)); }
    [[nodiscard]] std::string playing(const Moment& now) const { return m_list.playing(in_list(now)); }
    [[nodiscard]] std::string next(const Moment& now) const { return m_list.next(in_list(now)); }
    [[nodiscard]] std::vector<Rect> areas(const Moment& now) const { return m_list.areas(in_list(now)); }
    // When another program takes over from the one that plays; nothing when none does for long.
    [[nodiscard]] std::optional<Milliseconds> end_of_turn(const Moment& now) const;
    // When the screen is to be drawn anew; nothing when it stays for good.
    [[nodiscard]] std::optional<Milliseconds> next_change(const Moment& now) const;

  private:
    // Of the files of a program; they tell whether it has changed.
    struct Versions {
        std::uint64_t program = 0, data = 0;
        bool operator==(const Versions&) const = default;
    };

    [[nodiscard]] Moment in_list(Moment now) const {
        now.played -= m_since;
        return now;
    }
    [[nodiscard]] std::map<std::string, Versions> find_all(const FileSystem& files) const;
    std::string load(const FileSystem& files, const std::string& name);
    std::string forget_missing(const std::map<std::string, Versions>& found);

    Generation m_generation;
    PixelFormat m_format;
    Playlist m_list;
    Errors m_errors;
    std::map<std::string, Versions> m_known;
    std::uint64_t m_seen = 0; // version of the file system
    Milliseconds m_since{0};
};

} // namespace qm::sim
