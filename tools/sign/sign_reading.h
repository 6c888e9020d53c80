// Reads a sign's description from its JSON file.
#pragma once

#include "SignDescription.h"

namespace qm::sign {

// Paths in the file are relative to its folder. Throws JsonError with the field and the reason.
[[nodiscard]] SignDescription read_sign(const std::string& path);

} // namespace qm::sign
