// What a controller says of itself, record by record.
#pragma once

#include "simulator/controller/State.h"

namespace qm::sim {

void write_ping(ByteWriter& out, const State& state, Now now);   // 52 bytes
void write_status(ByteWriter& out, const State& state, Now now); // 61 bytes
void write_heartbeat(ByteWriter& out, const State& state);       // 40 bytes
// 206 bytes, 595 with a web server
void write_net_search(ByteWriter& out, const State& state, Now now);

} // namespace qm::sim
