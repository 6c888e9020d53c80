// Builds what a controller answers, well or spoilt.
#pragma once

#include "simulator/Fault.h"
#include "simulator/Request.h"

#include <chrono>
#include <cstdint>
#include <optional>
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

// The bytes of an answer and how they go out.
struct Delivery {
    enum class Then { stay, close, reset };

    std::chrono::milliseconds late{0}; // before the first byte
    ByteBuffer bytes;
    std::size_t first = 0;              // bytes of the first piece
    std::chrono::milliseconds pause{0}; // before the rest
    Then then = Then::stay;
};

[[nodiscard]] Delivery deliver(const Request& request, const Reply& reply, Sender sender,
                               const std::optional<Fault>& fault);

} // namespace qm::sim
