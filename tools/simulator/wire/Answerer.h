// Who answers what a server receives.
#pragma once

#include "simulator/wire/Delivery.h"
#include "simulator/wire/FrameSplitter.h"

namespace qm::sim {

class Answerer {
  public:
    virtual ~Answerer() = default;
    virtual Delivery answer(const ReceivedFrame& frame) = 0;
    // Bytes of the longest body that is worth receiving.
    [[nodiscard]] virtual std::size_t longest_frame() const = 0;
};

} // namespace qm::sim
