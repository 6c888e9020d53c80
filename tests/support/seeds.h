// What the tests send and receive, as inputs for fuzz/.
#pragma once

#include "support/bytes.h"

#include <string>

namespace qm::test {

// Keeps the bytes for that target below the folder that QM_SEEDS names; without it, does nothing. The same
// bytes are kept once.
void keep_seed(const std::string& target, Bytes bytes);

} // namespace qm::test
