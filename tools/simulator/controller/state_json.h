// A controller's state as JSON, for people, scripts and the store.
#pragma once

#include "simulator/controller/ControllerState.h"
#include "simulator/controller/FileSystem.h"

#include <nlohmann/json_fwd.hpp>
#include <string>
#include <vector>

namespace qm::sim {

[[nodiscard]] nlohmann::json json_of(const ControllerState& state);
// Throws std::exception for anything but what json_of gives. Fields that are not there keep their defaults.
[[nodiscard]] ControllerState state_from(const nlohmann::json& json);

// A file without its data.
[[nodiscard]] nlohmann::json json_of(const StoredFile& file);
[[nodiscard]] nlohmann::json json_of(const FileSystem& files);

// Everything, with the list of files; texts of hosts may be in any encoding.
[[nodiscard]] nlohmann::json json_of(const Snapshot& snapshot, nlohmann::json files);
// The same as indented text.
[[nodiscard]] std::string state_text(const Snapshot& snapshot, const std::vector<StoredFile>& files);

// Two digits a byte.
[[nodiscard]] std::string hex_of(Bytes bytes);

// Bytes as a text that is a file name as well: letters, digits, - and _ as they are, others as %XX.
[[nodiscard]] std::string label_of(const std::string& bytes);
[[nodiscard]] std::string bytes_of(const std::string& label);

} // namespace qm::sim
