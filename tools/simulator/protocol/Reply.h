// What a controller says to a request.
#pragma once

#include "simulator/protocol/ErrorValue.h"
#include "support/bytes.h"

#include <cstdint>
#include <variant>

namespace qm::sim {

struct Ack {};

// What carrying out a command comes to: done, refused, or a payload.
using Reply = std::variant<Ack, ErrorValue, ByteBuffer>;

// How a controller signs its answers.
struct Sender {
    std::uint16_t type = 0;
    std::uint16_t address = 0;
};

} // namespace qm::sim
