// What a controller says of itself, record by record.
#pragma once

#include "simulator/controller/State.h"

namespace qm::sim {

[[nodiscard]] ByteBuffer ping_record(const State& state, Now now);   // 52 bytes
[[nodiscard]] ByteBuffer status_record(const State& state, Now now); // 61 bytes
[[nodiscard]] ByteBuffer heartbeat_record(const State& state);       // 40 bytes
[[nodiscard]] ByteBuffer net_search_record(const State& state,
                                           Now now); // 206 bytes, 595 with a web server

} // namespace qm::sim
