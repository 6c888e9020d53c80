// One command as it came to a controller.
#pragma once

#include "support/bytes.h"

#include <cstdint>

namespace qm::sim {

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

} // namespace qm::sim
