#include "simulator/wire/FrameSplitter.h"

#include <utility>

namespace qm::sim {
namespace {

constexpr std::uint8_t kStart = 0xA5, kEnd = 0x5A;
constexpr std::size_t kMostKept = 4096;
constexpr std::uint8_t kEscapeLow = 0x5B, kEscapeHigh = 0xA6;
constexpr BadFrame kCutOff{"it is cut off by the start of another"}, kBroken{"its stuffing is broken"},
    kEmpty{"there is nothing in it"}, kTooLong{"it is too long for a screen of this size"};

} // namespace

std::optional<ReceivedFrame> FrameSplitter::next(Bytes& input) {
    while (!input.empty()) {
        const std::uint8_t byte = input.front();
        input = input.subspan(1);
        if (byte == kStart) {
            const State before = std::exchange(m_state, State::started);
            if (before == State::inside || before == State::escaping) m_bad = kCutOff;
            m_body.clear();
            if (before != State::outside && before != State::started) return cut_off();
            keep(byte);
        } else if (m_state != State::outside) {
            keep(byte);
            if (byte == kEnd) return finish();
            collect(byte);
        }
    }
    return std::nullopt;
}

void FrameSplitter::keep(std::uint8_t byte) {
    if (m_bytes.size() < kMostKept) m_bytes.push_back(byte);
}

// Frames are made in their places: of one that is moved, GCC 12 says that it may not be initialized.
std::optional<ReceivedFrame> FrameSplitter::cut_off() {
    std::optional<ReceivedFrame> frame(std::in_place);
    frame->body = m_bad;
    frame->bytes.swap(m_bytes);
    keep(kStart);
    return frame;
}

std::optional<ReceivedFrame> FrameSplitter::finish() {
    std::optional<ReceivedFrame> frame(std::in_place);
    frame->bytes.swap(m_bytes);
    const State at_end = std::exchange(m_state, State::outside);
    if (at_end == State::inside)
        std::get<ByteBuffer>(frame->body).swap(m_body);
    else if (at_end == State::spoilt)
        frame->body = m_bad;
    else
        frame->body = at_end == State::started ? kEmpty : kBroken;
    return frame;
}

void FrameSplitter::collect(std::uint8_t byte) {
    if (m_state == State::spoilt) return;
    if (m_state == State::escaping) {
        // 5B 02, 5B 01, A6 02 and A6 01 stand for 5A, 5B, A5 and A6.
        if (byte != 1 && byte != 2) return spoil(kBroken);
        byte = static_cast<std::uint8_t>(m_escape + 1 - byte);
    } else if (byte == kEscapeLow || byte == kEscapeHigh) {
        m_escape = byte;
        m_state = State::escaping;
        return;
    }
    if (m_body.size() == m_longest) return spoil(kTooLong);
    m_body.push_back(byte);
    m_state = State::inside;
}

void FrameSplitter::spoil(BadFrame bad) {
    m_body = {};
    m_bad = bad;
    m_state = State::spoilt;
}

} // namespace qm::sim
