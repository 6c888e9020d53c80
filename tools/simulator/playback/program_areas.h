// Area records of program files.
#pragma once

#include "simulator/playback/program_reading.h"

namespace qm::sim {

// One area record, which takes the whole part of the file.
bool read_area(Cursor in, Attempt& attempt);

} // namespace qm::sim
