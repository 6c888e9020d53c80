// A request taken off the wire again, without the library.
#pragma once

#include "support/bytes.h"

namespace qm::test {

struct SentRequest {
    Ouint8 version = 0; // of the link protocol; 0 for bytes that are no request
    Ouint8 group = 0, code = 0;
    ByteBuffer payload{};
};

// Undoes the stuffing (eight start bytes, one end byte, whole escapes between) and the headers.
SentRequest parse_request(Bytes frame);

} // namespace qm::test
