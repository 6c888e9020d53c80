// Which screen a program is made for, and whether it fits.
#pragma once

#include "ProgramDescription.h"

namespace qm::ctl {

struct ProgramTarget {
    unsigned generation = 6;
    Ouint16 type = 0; // of the controller
    E_ScreenColor_G56 color = SCREEN_COLOR_DOUBLE;
    E_DoubleColorPixel_G56 wiring = DOUBLE_COLOR_PIXTYPE_1;
    PixelSize size;
};

class ProgramTargetOptions {
  public:
    void add_to(ArgumentList& command);

    // Options go before the description, and the description before a controller, which is asked when
    // something is open. Before a program is sent, the controller is always asked, and goes before the
    // description. Throws UsageError or JsonError for what contradicts itself.
    [[nodiscard]] ProgramTarget target(const Session& session, const ProgramDescription& program,
                                       bool sending) const;
    // As the options or the description say; throws likewise.
    [[nodiscard]] std::optional<unsigned> generation(const ProgramDescription& program) const;

  private:
    std::optional<unsigned> m_generation, m_type, m_color;
};

// The drawing area of a program: the screen without its border.
[[nodiscard]] Rect inside_border(const ProgramDescription& program, const ProgramTarget& target);

// Fills what the description left to the screen, and takes out what the generation does not have; returns a
// line for everything taken out. Throws JsonError for what does not fit the screen.
std::vector<std::string> fit_to(ProgramDescription& program, const ProgramTarget& target);

} // namespace qm::ctl
