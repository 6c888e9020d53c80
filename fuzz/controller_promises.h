// What a simulated controller promises of every answer, and of every state that it may be in.
#pragma once

#include "cmdPacket/LedHVPacket.h"
#include "require.h"
#include "simulator/controller/SimulatedController.h"
#include "simulator/controller/state_json.h"
#include "simulator/wire/Delivery.h"

#include <nlohmann/json.hpp>

namespace qm::sim {

using fuzz::require;

// The library reads the answer as it was meant.
inline void check_answer(const Request& request, const Reply& reply, Sender sender) {
    ByteBuffer room(0x10000);
    qm::Answer answer{room};
    const Delivery delivery = deliver(request, reply, sender, std::nullopt);
    const int status = LedHVPacket().Unpack(delivery.bytes, request.group, request.cmd, answer);
    const auto* const payload = std::get_if<ByteBuffer>(&reply);
    const bool refused = std::holds_alternative<ErrorValue>(reply);
    require(status == (refused ? static_cast<int>(std::get<ErrorValue>(reply)) : 0));
    require(std::ranges::equal(answer.received(), payload ? *payload : ByteBuffer()));
}

// Its state can be told, and files and settings are the same after a restart.
inline void check_state(const SimulatedController& controller, Now now) {
    const State& state = controller.state();
    require(nlohmann::json::accept(state_text(controller.snapshot(now), state.files.copies())));
    SimulatedController again(state.model);
    again.restore(state_from(nlohmann::json::parse(json_of(state.settings).dump())), state.files.copies());
    require(again.state().settings == state.settings && json_of(again.state().files) == json_of(state.files));
    require(state.files.transferring() || again.state().programs.errors() == state.programs.errors());
}

} // namespace qm::sim
