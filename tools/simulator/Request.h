// Opens the frames that reach a controller.
#pragma once

#include "simulator/FrameSplitter.h"
#include "simulator/Series.h"
#include "support/bytes.h"

#include <cstdint>
#include <variant>

namespace qm::sim {

// One command as it came.
struct Request {
    bool handshake = false;        // the short frame of a host that does not know the controller yet
    std::uint16_t source = 0x8000; // who asks
    std::uint16_t sequence = 0;
    bool malformed = false; // the frame is good, the command inside it is not
    bool wants_answer = true;
    std::uint8_t group = 0, cmd = 0;
    ByteBuffer application; // the command's own header, then its payload
    std::size_t payload_at = 0;

    [[nodiscard]] Bytes payload() const { return Bytes(application).subspan(payload_at); }
};

// Checks the body of a frame and finds the command in it. Understood are the handshake, the frame of the
// controller's generation, and the envelope with a bare command or one whole stuffed frame inside;
// generation 5 also takes the envelope that has no CRC.
[[nodiscard]] std::variant<Request, BadFrame> open_request(Bytes body, Generation generation);

} // namespace qm::sim
