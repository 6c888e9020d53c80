// Reads a program's description from its JSON file.
#pragma once

#include "ProgramDescription.h"

namespace qm::sign {

// Paths in the file are relative to its folder. Throws JsonError with the field and the reason.
[[nodiscard]] ProgramDescription read_program(const std::string& path);

} // namespace qm::sign
