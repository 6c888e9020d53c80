// The commands that the controller understands. A new command is one more row; a new family one more table.
#pragma once

#include "simulator/controller/Outcome.h"
#include "simulator/controller/State.h"

#include <span>

namespace qm::sim {

struct Command {
    std::uint8_t group, cmd;
    const char* name;
    std::size_t shortest, longest; // bytes of the payload
    // Works on a payload of a right length; the log need only say what the name does not.
    Outcome (*carry_out)(State& state, Bytes payload, Now now);
};

constexpr std::uint8_t kFileGroup = 0xA1, kConfigurationGroup = 0xA2, kNetworkGroup = 0xA4,
                       kDynamicAreaGroup = 0xA7;

[[nodiscard]] inline std::string text_of(Bytes bytes) { return {bytes.begin(), bytes.end()}; }

[[nodiscard]] std::span<const Command> control_commands();
[[nodiscard]] std::span<const Command> power_commands();
[[nodiscard]] std::span<const Command> file_commands();
[[nodiscard]] std::span<const Command> network_commands();
[[nodiscard]] std::span<const Command> dynamic_area_commands();

} // namespace qm::sim
