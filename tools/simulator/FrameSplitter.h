// Cuts a stream of bytes into frames and undoes their stuffing.
#pragma once

#include "support/bytes.h"

#include <cstddef>
#include <optional>

namespace qm::sim {

class FrameSplitter {
  public:
    // The longest body that is collected; what is longer is skipped to its end.
    static constexpr std::size_t kMaxBody = std::size_t{32} << 20U;

    explicit FrameSplitter(std::size_t max_body = kMaxBody) : m_max_body(max_body) {}

    // Takes bytes off the front of input until a frame ends. Gives the unstuffed body of that frame, or
    // nothing when input ran out first. A frame that breaks the stuffing, is cut off by the start of another
    // or is too long gives an empty body. Bytes between frames are skipped.
    std::optional<Frame> next(Bytes& input);

  private:
    enum class State { outside, started, inside, escaping, spoilt };

    void start();
    Frame finish();
    void collect(std::uint8_t byte);
    void spoil();

    std::size_t m_max_body;
    State m_state = State::outside;
    std::uint8_t m_escape = 0; // first byte of the escape pair at hand
    Frame m_body;
};

} // namespace qm::sim
