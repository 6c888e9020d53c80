// Page records of program files.
#pragma once

#include "simulator/playback/program_reading.h"

namespace qm::sim {

// Generation 5: PageDataLen 4, page header 13 (the last 4 bytes zero), pixels.
bool read_page_5(Cursor& in, Page& page, Extent& extent);

// Generation 6: PageDataLen 4, the 9 common bytes, zero 1, CartoonFrameRate 1, zero 6, BackNotValidFlag 1,
// Dataoffset 4, DataLen 4. The pixels are in the data file.
bool read_page_6(Cursor& in, const Reading& reading, Page& page, Extent& extent, Attempt& attempt);

} // namespace qm::sim
