// Rows of the table: a piece of work, ours, and beside it peers that do the same, or the least that could be
// done, in the same run. Every contender is a benchmark of its own, named "work/ours" or "work/peer".
#pragma once

#include "support/bytes.h"

#include <functional>
#include <string>
#include <vector>

namespace qm::bench {

using Run = std::function<void()>;

struct Peer {
    std::string name;
    Run run;
    double mark = 0; // what the peer's cost over ours should come to at least; 0: nothing is asked
};

// Work of the processor on so many bytes of input, in processor time. Neither the work's nor a peer's name
// holds a "/".
void compare_speed(const std::string& work, std::size_t bytes, const Run& ours,
                   const std::vector<Peer>& peers);

// Work that mostly waits, in real time: each run is timed by itself.
void compare_time(const std::string& work, const Run& ours, const std::vector<Peer>& peers);

// The most memory that a run holds at once, beside a number of bytes that it cannot do without.
void compare_memory(const std::string& work, const Run& ours, const std::string& peer, std::size_t bytes);

// Ends the program: the time of a wrong answer is worth nothing.
void require(bool right, const std::string& what);

// The same bytes in every run of the program.
[[nodiscard]] ByteBuffer random_bytes(std::size_t count);

// What there is to compare, by theme. Inputs are made and answers checked before anything is timed.
void conversion();
void checksums();
void stuffing();
void exchanges();
void files();
void transfer();
void programs();

} // namespace qm::bench
