// Payloads and frames put together field by field, and pictures written as letters.
#pragma once

#include "simulator/playback/Image.h"
#include "simulator/playback/ReceivedArea.h"

#include <string>
#include <vector>

namespace qm::sim::test {

// What follows the command header: the areas of one add/update with no sound. A page stays for 3 seconds;
// running text moves a pixel every 33 ms.
struct AreaSample {
    std::uint8_t id = 1;
    Rect rect{0, 0, 8, 1};
    std::vector<ByteBuffer> pages{};
    std::uint8_t mode = 1; // how its pages appear
};
ByteBuffer content_of(const std::vector<AreaSample>& areas);
// The same as a payload, from its command header 01 A7 00 00 00 on.
ByteBuffer payload_of(const std::vector<AreaSample>& areas);

// A whole stuffed frame: the handshake, and an envelope around any bytes.
ByteBuffer handshake(std::uint16_t sequence = 2);
ByteBuffer envelope_around(Bytes bytes);

// "RG./..Y": rows from the top; R, G, B, Y(ellow), M(agenta), C(yan), W(hite) and . for black. Any other
// colour shows as ?.
std::string letters(const Image& image);

} // namespace qm::sim::test
