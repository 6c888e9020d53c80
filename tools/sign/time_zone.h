// Local time elsewhere.
#pragma once

#include "qm_sdk_dual.hpp"

#include <string>

namespace qm::sign {

// The name of a time zone that this host knows, such as Europe/Lisbon. Throws std::invalid_argument.
[[nodiscard]] std::string read_time_zone(const std::string& text);

// The time in a zone, which is the host's own when it is empty, so many seconds from now.
[[nodiscard]] Time time_in(const std::string& zone, int seconds);

// From one time to another of the same zone.
[[nodiscard]] long long seconds_between(const Time& from, const Time& to);

} // namespace qm::sign
