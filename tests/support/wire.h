// The controllers' framing once more, written without the library, so that the two can be held against each
// other: what a controller answers, whole or with any field falsified.
#pragma once

#include "support/bytes.h"

#include <optional>

namespace qm::test {

// CRC-16/ARC, bit by bit.
Ouint16 crc16(Bytes bytes);

ByteBuffer stuff(Bytes body);

struct AnswerFrame {
    Ouint8 version = 7; // 5, 7 or 0xF0 (an envelope)
    Ouint8 protocol_type = 0;
    Ouint16 device_type = 0x0262;
    Ouint8 option = 0; // a reserved byte in generation 5, none in an envelope
    Ouint8 group = 0xA2, cmd = 0x80;
    Ouint16 error = 0;
    ByteBuffer payload{};

    // Lengths to claim in place of the true ones: of the payload, and of all that follows the link header.
    std::optional<Ouint16> claimed_payload{}, claimed_data{};
    // Spoils the checksums by XOR; everything else is right whatever else is falsified.
    Ouint16 crc_fault = 0;
    Ouint8 header_fault = 0;

    [[nodiscard]] ByteBuffer body() const;
    [[nodiscard]] ByteBuffer bytes() const { return stuff(body()); }
};

} // namespace qm::test
