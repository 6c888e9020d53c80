// JSON that people write.
#pragma once

#include <nlohmann/json_fwd.hpp>
#include <string>

namespace qm::options {

// Throws std::invalid_argument for syntax errors, with line and column, and for a field that stands twice in
// an object.
[[nodiscard]] nlohmann::json parse_json(const std::string& text);

} // namespace qm::options
