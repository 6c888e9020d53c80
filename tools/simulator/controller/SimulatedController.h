// The controller itself: its state and what the commands do to it. It knows no sockets, no frames and no
// clock of its own.
#pragma once

#include "simulator/controller/Outcome.h"
#include "simulator/controller/State.h"
#include "simulator/protocol/Request.h"

#include <string_view>

namespace qm::sim {

class SimulatedController {
  public:
    explicit SimulatedController(const Model& model) : m_state(model) {}

    // Takes up what was kept over a restart.
    void restore(ControllerState settings, std::vector<StoredFile> files);

    // Carries out one request. A refused one changes nothing.
    Outcome handle(const Request& request, Now now);

    // Notes a request that is refused whatever it asks for.
    Outcome refuse(const Request& request, ErrorValue error);

    // One datagram for its Wi-Fi module, and the answer.
    std::string ask_wifi(std::string_view text);

    [[nodiscard]] Image screen(Now now) const;
    // When programs or areas next change the screen; nothing when they never do.
    [[nodiscard]] std::optional<Milliseconds> next_change(Now now) const;
    [[nodiscard]] Snapshot snapshot(Now now) const;
    [[nodiscard]] Sender sender() const { return {m_state.model.type, m_state.settings.address}; }
    [[nodiscard]] const State& state() const { return m_state; }

  private:
    State m_state;
};

} // namespace qm::sim
