// The controllers' framing once more, written without the library, so that the two can be held against each
// other: what a controller answers, whole or with any field falsified.
#pragma once

#include "support/bytes.h"

#include <optional>

namespace qm::test {

// CRC-16/ARC, bit by bit.
Ouint16 crc16(Bytes bytes);

ByteBuffer stuff(Bytes body);
// Undoes escapes, a byte at a time; what is none stays.
ByteBuffer restore(Bytes stuffed);
// What stands between eight start bytes and one end byte; empty for bytes that are no frame.
ByteBuffer unstuff(Bytes frame);

// A request taken off the wire again.
struct SentRequest {
    Ouint8 version = 0; // of the link protocol; 0 for bytes that are no request
    Ouint8 group = 0, code = 0;
    ByteBuffer payload{};
};
SentRequest parse_request(Bytes frame);

// What the link header of an answer's body encloses, when lengths and checksums are right.
std::optional<Bytes> application_of(Bytes body);

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
    [[nodiscard]] ByteBuffer bytes() const;
};

// Generation 6: an acknowledgement, a refusal, and the answer to a command.
inline ByteBuffer ack() { return AnswerFrame{.group = 0xA0, .cmd = 0}.bytes(); }
inline ByteBuffer nack(Ouint16 error) { return AnswerFrame{.group = 0xA0, .cmd = 1, .error = error}.bytes(); }
inline ByteBuffer answer_to(Ouint8 group, Ouint8 code, ByteBuffer payload = {}) {
    return AnswerFrame{.group = group, .cmd = static_cast<Ouint8>(code + 0x80), .payload = std::move(payload)}
        .bytes();
}

} // namespace qm::test
