// Builds what a controller answers, well or spoilt.
#pragma once

#include "simulator/protocol/Reply.h"
#include "simulator/protocol/Request.h"
#include "simulator/wire/Fault.h"

#include <chrono>
#include <optional>

namespace qm::sim {

// The bytes of an answer and how they go out; no bytes for a frame that is not answered.
struct Delivery {
    enum class Then { stay, close, reset };

    std::chrono::milliseconds late{0}; // before the first byte
    ByteBuffer bytes;
    std::size_t first = 0;              // bytes of the first piece
    std::chrono::milliseconds pause{0}; // before the rest
    Then then = Then::stay;
    bool updated = false; // the screen was given something to show
};

[[nodiscard]] Delivery deliver(const Request& request, const Reply& reply, Sender sender,
                               const std::optional<Fault>& fault);

} // namespace qm::sim
