// What a request has come to.
#pragma once

#include "simulator/protocol/Reply.h"

#include <string>

namespace qm::sim {

struct Outcome {
    Reply reply;
    std::string log;      // the request and what became of it, for the log
    bool updated = false; // the screen was given something to show, be it what it showed before
};

[[nodiscard]] inline Outcome done() { return {Ack{}, {}}; }
[[nodiscard]] inline Outcome refuse(ErrorValue error) { return {error, {}}; }

} // namespace qm::sim
