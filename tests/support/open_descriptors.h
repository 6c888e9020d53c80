// What a process holds open.
#pragma once

#include <cstddef>

namespace qm::test {

// How many descriptors are open, but for those of pipes: the sanitizers open some for a moment, in any
// thread.
std::size_t open_descriptors();

} // namespace qm::test
