#include "simulator/FrameSplitter.h"

#include <utility>

namespace qm::sim {
namespace {

constexpr std::uint8_t kStart = 0xA5, kEnd = 0x5A;
constexpr std::uint8_t kEscapeLow = 0x5B, kEscapeHigh = 0xA6;

} // namespace

std::optional<Frame> FrameSplitter::next(Bytes& input) {
    while (!input.empty()) {
        const std::uint8_t byte = input.front();
        input = input.subspan(1);
        if (byte == kStart) {
            const bool cut_off = m_state != State::outside && m_state != State::started;
            start();
            if (cut_off) return Frame{};
        } else if (m_state != State::outside) {
            if (byte == kEnd) return finish();
            collect(byte);
        }
    }
    return std::nullopt;
}

void FrameSplitter::start() {
    m_body.clear();
    m_state = State::started;
}

Frame FrameSplitter::finish() {
    const bool whole = m_state == State::inside;
    m_state = State::outside;
    return whole ? std::exchange(m_body, {}) : Frame{};
}

void FrameSplitter::collect(std::uint8_t byte) {
    if (m_state == State::spoilt) return;
    if (m_state == State::escaping) {
        // 5B 02, 5B 01, A6 02 and A6 01 stand for 5A, 5B, A5 and A6.
        if (byte != 1 && byte != 2) return spoil();
        byte = static_cast<std::uint8_t>(m_escape + 1 - byte);
    } else if (byte == kEscapeLow || byte == kEscapeHigh) {
        m_escape = byte;
        m_state = State::escaping;
        return;
    }
    if (m_body.size() == m_max_body) return spoil();
    m_body.push_back(byte);
    m_state = State::inside;
}

void FrameSplitter::spoil() {
    m_body = {};
    m_state = State::spoilt;
}

} // namespace qm::sim
