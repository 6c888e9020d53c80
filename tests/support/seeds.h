// What the tests send and receive, as inputs for fuzz/.
#pragma once

#include "support/bytes.h"

#include <string>

namespace qm::test {

// Keeps the bytes for that target below the folder that QM_SEEDS names; without it, does nothing. The same
// bytes are kept once.
void keep_seed(const std::string& target, Bytes bytes);

// The same for a target that takes the controller's type from a byte in front: one input for each.
void keep_seeds(const std::string& target, Bytes bytes);
// A program's file for fuzz/program_file.cpp, and in generation 6 its data file, both with their CRCs.
void keep_program_seeds(Bytes file, Bytes data = {});

} // namespace qm::test
