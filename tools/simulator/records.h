// What a controller says of itself, record by record.
#pragma once

#include "simulator/Controller.h"

namespace qm::sim {

[[nodiscard]] Frame ping_record(const State& state, Moment now);       // 52 bytes
[[nodiscard]] Frame status_record(const State& state, Moment now);     // 61 bytes
[[nodiscard]] Frame heartbeat_record(const State& state);              // 40 bytes
[[nodiscard]] Frame net_search_record(const State& state, Moment now); // 206 bytes, 595 with a web server

} // namespace qm::sim
