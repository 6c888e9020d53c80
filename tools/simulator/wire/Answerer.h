// Who answers what a server receives.
#pragma once

#include "simulator/wire/Delivery.h"
#include "simulator/wire/FrameSplitter.h"

namespace qm::sim {

class Answerer {
  public:
    virtual ~Answerer() = default;
    // The peer is address and port of who asks.
    virtual Delivery answer(const ReceivedFrame& frame, const std::string& peer) = 0;
    // Bytes of the longest body that is worth receiving.
    [[nodiscard]] virtual std::size_t longest_frame() const = 0;
};

} // namespace qm::sim
