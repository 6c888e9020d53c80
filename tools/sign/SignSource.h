// What a sign is to play, for controllers of several kinds: made once for each kind.
#pragma once

#include "AreaSource.h"
#include "ProgramSource.h"
#include "SignDescription.h"

#include <deque>

namespace qm::sign {

// A program made for a controller; the source keeps it.
struct SignProgram {
    const ProgramSource* source;
    const FittedProgram* fitted;
    const std::vector<File>* files;
};

// All threads may ask at once.
class SignSource {
  public:
    // Reads the description and all that it names. Throws UsageError with the file's name.
    void read(const std::string& path);

    [[nodiscard]] const SignDescription& sign() const { return m_sign; }
    // Null when it has none.
    [[nodiscard]] const AreaSource* areas() const { return m_sign.areas.empty() ? nullptr : &m_areas; }
    // In the playlist's order. Throws UsageError when a program does not fit the controller, and Failure.
    [[nodiscard]] std::vector<SignProgram> programs(const Identity& controller) const;

  private:
    void read_programs();
    void require_order() const;
    [[nodiscard]] const ProgramSource& variant_for(std::size_t entry, const Identity& controller) const;

    std::string m_path;
    SignDescription m_sign;
    std::deque<std::deque<ProgramSource>> m_playlist; // variants of each entry
    AreaSource m_areas;
};

} // namespace qm::sign
