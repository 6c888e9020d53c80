// What a process holds.
#pragma once

#include <cstddef>
#include <sys/types.h>

namespace qm::test {

std::size_t memory_of(pid_t process);      // resident, KB
std::size_t descriptors_of(pid_t process); // open

} // namespace qm::test
