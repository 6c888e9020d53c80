// Counts what operator new gives out, in this program only.
#pragma once

#include "compare.h"

namespace qm::bench {

// How many more bytes than at its start the run held at once.
[[nodiscard]] std::size_t heap_peak(const Run& run);

} // namespace qm::bench
