// A connection whose controller answers with what the input says: bytes as they stand there, or a frame
// around them that passes every check which the input does not spoil.
#pragma once

#include "memory_link.h"
#include "wire.h"

namespace qm::fuzz {

class AnsweringLink : public test::MemoryLink {
  public:
    AnsweringLink(Ouint16 type, Bytes input) : MemoryLink(type), m_input(input) {}
    using ON_command::ping_handshake;

    int Recv(Ouint8* buff, int& dataLen, int iTimeout) override {
        m_latest = next_answer();
        answers.push_back(m_latest);
        pieces.clear();
        return MemoryLink::Recv(buff, dataLen, iTimeout);
    }

    [[nodiscard]] const ByteBuffer& latest() const { return m_latest; }
    // Whether the latest answer was framed and right for what was asked, and what it carried.
    [[nodiscard]] bool was_right() const { return m_right; }
    [[nodiscard]] const ByteBuffer& payload() const { return m_payload; }

  private:
    enum How : unsigned { version = 3, raw = 3, spoilt_length = 4, global = 8, other = 16 };

    ByteBuffer next_answer() {
        const unsigned how = m_input.u8();
        const Bytes bytes = m_input.bytes(std::min<std::size_t>(m_input.u16(), m_input.left()));
        m_payload.assign(bytes.begin(), bytes.end());
        m_right = (how & version) != raw && (how & (spoilt_length | global | other)) == 0;
        return (how & version) == raw ? m_payload : framed(how);
    }

    ByteBuffer framed(unsigned how) {
        constexpr Ouint8 kVersions[] = {5, 7, 0xF0};
        test::SentRequest asked = test::parse_request(sent());
        if (asked.version == 0) asked.group = hv_GPR_5HDynamicArea; // in an envelope, or a handshake
        test::AnswerFrame frame{.version = kVersions[how & version],
                                .device_type = static_cast<Ouint16>(how << 8 | 0x62),
                                .group = how & global ? Ouint8{hv_GRP_Global} : asked.group,
                                .cmd = static_cast<Ouint8>(asked.code + (how & global ? 0 : 0x80)),
                                .payload = m_payload};
        if (how & global) frame.cmd = static_cast<Ouint8>(how >> 5), frame.error = m_input.u16();
        if (how & other) frame.cmd = m_input.u8();
        if (how & spoilt_length) (how & 32 ? frame.claimed_data : frame.claimed_payload) = m_input.u16();
        return frame.bytes();
    }

    ByteReader m_input;
    ByteBuffer m_latest, m_payload;
    bool m_right = false;
};

} // namespace qm::fuzz
