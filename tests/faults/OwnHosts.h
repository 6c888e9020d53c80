// Calls that broadcast, made by processes on hosts of their own, each with a network interface and no way
// out.
#pragma once

#include "Matrix.h"

#include <optional>

namespace qm::test {

// Runs them, many at a time. Nothing where no such hosts can be had.
std::optional<std::vector<Met>> run_on_own_hosts(const std::vector<Case>& cases);

} // namespace qm::test
