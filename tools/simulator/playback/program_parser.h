// The strict parser of the files that bring programs.
#pragma once

#include "simulator/playback/StoredProgram.h"

#include <variant>

namespace qm::sim {

// A program, or why its file is refused: which field of which byte, and what was expected.
using ParsedProgram = std::variant<StoredProgram, std::string>;

// The program file of generation 5, for a screen whose pixels are laid out so. Every byte must be accounted
// for. Two numbers are not in the file, and are found by what parses to the last byte:
//
//   play periods   1 to 8; the most with which the rest parses, for the start of a border reads like a period
//                  more often than a period like the start of a border
//   border pixels  as many whole groups of pixels as the rest leaves. The pattern of an area is as thick as
//                  the edges that its pages leave free; that of the screen as the header says, where that
//                  divides the pixels, else 1 pixel. Its length is what follows, padding included, or what
//                  the header says (FrameUnitLength, AreaFWidth) where that differs by the padding alone.
//
// A border whose flag is 0 reads as none. Where a screen border is followed by nothing but an area count, it
// cannot be told from one that is cut short: only the CRC guards against that.
[[nodiscard]] ParsedProgram parse_program(Bytes file, PixelFormat format);

// The program file and the data file of generation 6.
[[nodiscard]] ParsedProgram parse_program(Bytes file, Bytes data, PixelFormat format);

} // namespace qm::sim
