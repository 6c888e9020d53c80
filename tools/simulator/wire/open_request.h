// Finds the command in a frame.
#pragma once

#include "simulator/protocol/Request.h"
#include "simulator/wire/FrameSplitter.h"
#include "support/controller_types.h"

namespace qm::sim {

// Checks the body of a frame and finds the command in it. Understood are the handshake, the frame of the
// controller's generation, and the envelope with a bare command or one whole stuffed frame inside;
// generation 5 also takes the envelope that has no CRC.
[[nodiscard]] std::variant<Request, BadFrame> open_request(Bytes body, Generation generation);

} // namespace qm::sim
