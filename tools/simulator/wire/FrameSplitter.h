// Cuts a stream of bytes into frames and undoes their stuffing.
#pragma once

#include "support/bytes.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <variant>

namespace qm::sim {

// A frame that a controller does not answer, and why not.
struct BadFrame {
    const char* why;
};

struct ReceivedFrame {
    std::variant<ByteBuffer, BadFrame> body; // unstuffed and never empty, or what is wrong with it
    ByteBuffer bytes{};                      // as they came, the first 4,096
};

class FrameSplitter {
  public:
    // Bodies up to this length are collected; a longer one is skipped to its end.
    explicit FrameSplitter(std::size_t longest) : m_longest(longest) {}

    // Takes bytes off the front of input until a frame ends. Nothing when input ran out first.
    // Bytes between frames are skipped.
    std::optional<ReceivedFrame> next(Bytes& input);

  private:
    enum class State { outside, started, inside, escaping, spoilt };

    std::optional<ReceivedFrame> cut_off(); // by the start of the next one
    std::optional<ReceivedFrame> finish();
    void keep(std::uint8_t byte);
    void collect(std::uint8_t byte);
    void spoil(BadFrame bad);

    std::size_t m_longest;
    State m_state = State::outside;
    std::uint8_t m_escape = 0; // first byte of the escape pair at hand
    ByteBuffer m_body, m_bytes;
    BadFrame m_bad{}; // the one that is skipped
};

} // namespace qm::sim
