// Builds a program with the library.
#pragma once

#include "ProgramTarget.h"

namespace qm::ctl {

struct ProgramFile {
    std::string name;
    Ouint8 type;
    std::vector<Ouint8> bytes;

    [[nodiscard]] Ouint32 crc() const; // CRC-32, as it stands in its last four bytes
};

// The pages of an area as the screen shows them, in PNG files, in the order in which they were made: text,
// then pictures.
struct AreaPages {
    std::string name; // area-1, background
    Rect rect;        // of the pages on the screen
    std::vector<std::string> pages;
};

// The one program that the library has under construction.
class ProgramSlot {
  public:
    ProgramSlot() = default;
    ProgramSlot(const ProgramSlot&) = delete;
    ProgramSlot& operator=(const ProgramSlot&) = delete;
    ~ProgramSlot() { program_deleteProgram(); }
};

// Throws JsonError for a picture that cannot be drawn.
void require_drawable(const ProgramDescription& program);

class ProgramBuilder {
  public:
    // The program, whose pictures can be drawn, has to fit the target; both stay the caller's. Throws
    // JsonError for too many pages, Failure when the library refuses.
    ProgramBuilder(const ProgramDescription& program, const ProgramTarget& target);

    // What is to be written to a controller, in the order in which it should be: pixels before the program
    // that points to them.
    [[nodiscard]] std::vector<ProgramFile> files() const;
    // The background first.
    [[nodiscard]] std::vector<AreaPages> pages() const;

  private:
    const ProgramDescription& m_program;
    const ProgramTarget& m_target;
    ProgramSlot m_slot;
};

// The rectangle that is left for the pages of an area.
[[nodiscard]] Rect drawing_rectangle(const Area& area);

} // namespace qm::ctl
