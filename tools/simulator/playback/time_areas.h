// Time areas in program files.
#pragma once

#include "simulator/playback/program_reading.h"

namespace qm::sim {

// The record of a time area behind its area header, up to its end.
bool read_time_area(Cursor& in, ProgramArea& area, Attempt& attempt);

} // namespace qm::sim
