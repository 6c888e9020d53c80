// The controller itself: its state and what the commands do to it. It knows no sockets, no frames and no
// clock of its own.
#pragma once

#include "simulator/Answer.h"
#include "simulator/Request.h"
#include "simulator/Screen.h"

#include <cstdint>
#include <deque>
#include <string>
#include <vector>

namespace qm::sim {

// What a controller is from the factory.
struct Model {
    std::uint16_t type = 0;
    int width = 0, height = 0;
    PixelFormat format;
};

// What the commands work on.
struct State {
    Model model;
    std::uint16_t address = 1;
    std::uint8_t brightness = 15;
    bool on = true;
    std::vector<PlayedArea> areas; // in the order in which they are drawn
    std::deque<Frame> payloads;    // dynamic-area commands received, most recent last
};

struct Outcome {
    Reply reply;
    std::string words;    // the request and what became of it, for the log
    bool updated = false; // the screen was given something to show, be it what it showed before
};

class Controller {
  public:
    explicit Controller(const Model& model) { m_state.model = model; }

    // Carries out one request. A refused one changes nothing.
    Outcome handle(const Request& request, Time now);

    // Notes a request that is refused whatever it asks for.
    Outcome refuse(const Request& request, ErrorValue error);

    [[nodiscard]] Image screen(Time now) const;
    [[nodiscard]] Sender sender() const { return {m_state.model.type, m_state.address}; }
    [[nodiscard]] const State& state() const { return m_state; }

  private:
    State m_state;
};

} // namespace qm::sim
