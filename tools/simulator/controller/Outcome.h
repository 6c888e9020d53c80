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

// Answers with what is written.
template <class Write> [[nodiscard]] Outcome answer(Write write) {
    ByteBuffer payload;
    ByteWriter out(payload);
    write(out);
    return {std::move(payload), {}};
}

} // namespace qm::sim
