// What a controller type implies. Its low byte is the series, its high byte the variant.
#pragma once

#include "simulator/protocol/PixelFormat.h"

#include <cstdint>

namespace qm::sim {

// Generation of the framing; series without one take the handshake and envelopes only.
enum class Generation { none, five, six };

[[nodiscard]] Generation generation_of(std::uint16_t type);

// How the type lays out pixel data; planes of 8 pixels for a type that is not known.
[[nodiscard]] TransferMode transfer_mode_of(std::uint16_t type);

} // namespace qm::sim
