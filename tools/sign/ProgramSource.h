// A program for screens of several kinds: made once for each.
#pragma once

#include "Kept.h"
#include "PlayTimes.h"
#include "ProgramBuilder.h"
#include "drawn_text.h"

#include <tuple>

namespace qm::sign {

// A program fitted to a screen.
struct FittedProgram {
    ProgramDescription program;
    Screen screen;
    DrawnTexts texts;               // the remarks begin with what generation 5 has to leave out
    std::vector<std::string> notes; // these alone
};

// All threads may ask at once.
class ProgramSource {
  public:
    // Reads the description and checks what needs no screen. Throws UsageError with the file's name.
    void read(const std::string& path);
    // The same for a playlist, which may say when it is played, and number it.
    void read(const std::string& path, const PlayTimes& times, std::optional<unsigned> id);

    [[nodiscard]] const std::string& path() const { return m_path; }
    [[nodiscard]] const ProgramDescription& program() const { return m_program; }

    // Throw likewise, and Failure.
    [[nodiscard]] const FittedProgram& fitted(const Screen& screen) const;
    [[nodiscard]] const std::vector<File>& files(const Screen& screen) const;

  private:
    using Kind = std::tuple<unsigned, unsigned, unsigned, unsigned, unsigned>; // of a screen
    static Kind kind_of(const Screen& screen);

    std::string m_path;
    ProgramDescription m_program;
    Kept<Kind, FittedProgram> m_fitted;
    Kept<Kind, std::vector<File>> m_files;
};

} // namespace qm::sign
