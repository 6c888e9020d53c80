// Builds a program from its description.
#pragma once

#include "PictureFiles.h"
#include "target.h"

namespace qm::sign {

// The pages of an area as the screen shows them, in PNG files, in the order in which they were made: text,
// then pictures.
struct AreaPages {
    std::string name; // area-1, background
    Rect rect;        // of the pages on the screen
    std::vector<std::string> pages;
};

// The CRC-32 that a program file ends in.
[[nodiscard]] std::uint32_t crc_at_end(const std::vector<std::uint8_t>& file);

// Throws JsonError for a picture that cannot be drawn.
void require_drawable(const ProgramDescription& program);

class ProgramBuilder {
  public:
    // The program, whose pictures can be drawn, has to fit the screen; both stay the caller's. Throws
    // JsonError for too many pages, Failure when the library refuses.
    ProgramBuilder(const ProgramDescription& program, const Screen& screen);

    // In the order in which they should be written.
    [[nodiscard]] std::vector<File> files() const;
    // The background first.
    [[nodiscard]] std::vector<AreaPages> pages() const;

  private:
    void add(const AreaDescription& area);
    void add_text(std::uint16_t id, const AreaDescription& area);
    void add_clock(std::uint16_t id, const AreaDescription& area);
    void add(const Background& background);

    const ProgramDescription& m_program;
    const Screen& m_screen;
    PictureFiles m_pictures;
    Program m_built;
};

} // namespace qm::sign
