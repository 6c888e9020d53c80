// A picture of everything that a program shows.
#pragma once

#include "ProgramBuilder.h"

namespace qm::sign {

// A PNG file: the screen with the first page of every area, below it the screen with the second ones, and so
// on; areas with fewer pages begin anew. An LED is a square of several pixels.
[[nodiscard]] std::string draw_overview(const ProgramDescription& program, const Screen& target,
                                        const std::vector<AreaPages>& pages);

} // namespace qm::sign
