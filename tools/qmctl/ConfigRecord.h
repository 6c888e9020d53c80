// A configuration as a JSON object with the fields of ConfigFile or ConfigFile_G6 by name.
#pragma once

#include "Session.h"

#include <nlohmann/json.hpp>

namespace qm::ctl {

// Reads a file of one JSON object whose names and values some generation knows. Throws std::invalid_argument
// with what was expected instead.
[[nodiscard]] nlohmann::json read_configuration(const std::string& path);

// The records. Fields that the ping tells are taken from there when they are not given; the others have to be
// given, but for FileType, the reserved bytes and CRC16. Throw std::invalid_argument with what is
// wrong: a field that is missing, or one of the other generation.
[[nodiscard]] ConfigFile configuration5(const nlohmann::json& fields, const Identity& controller);
[[nodiscard]] ConfigFile_G6 configuration6(const nlohmann::json& fields, const Identity& controller);

} // namespace qm::ctl
