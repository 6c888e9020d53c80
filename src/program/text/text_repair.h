// Makes any bytes fit for the UCS-2 conversion.
#pragma once

#include <string>
#include <string_view>

namespace qm {

// The text with U+FFFD for every invalid sequence and for every character outside the Basic Multilingual
// Plane, so that one bad character never swallows the rest.
[[nodiscard]] std::string repair_utf8(std::string_view text);

} // namespace qm
