// Program files put together by hand.
#pragma once

#include "hex.h"

namespace qm::sim::test {

// Closes a file with its CRC.
ByteBuffer sealed(ByteBuffer body);
ByteBuffer sealed(std::string_view text);

// A program of generation 5 for a single-colour screen in planes of 8 pixels: P007, played twice, 8:30 to
// 12:00 and 1:00 to 2:00; a screen border of 16 x 2; one area of 10 x 6 at (3, 1), which replaced another,
// with a border of 8 x 1 and two pages of running text.
ByteBuffer file_g5();

// A program of generation 6 for a double-colour screen in planes of 32 pixels: P005 for 60 seconds; a
// background of 32 x 1 at (0, 0), an area of the same size at (32, 0) that speaks; a page each.
struct Files {
    ByteBuffer program, data;
};
Files files_g6();

// A program of generation 6 and its data: one area of 8 x 1 with two pages, the first LED for 200 ms, the
// last one for 300 ms; names and pixels in hex.
ByteBuffer program_file(const std::string& name = "50 30 30 31", const std::string& periods = "00");
ByteBuffer data_file(const std::string& pixels = "7F FE", const std::string& digits = "30 30 31");

} // namespace qm::sim::test
