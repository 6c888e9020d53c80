// The packet codec of HV-family controllers: builds request frames, checks and opens answer frames.
#pragma once

#include "cmdPacket/LedPacket.h"
#include "cmdPacket/catalogue.h"

namespace qm {

// Where an answer's payload goes: the caller's buffer, and how much of it was filled.
struct Answer {
    std::span<Ouint8> buffer;
    int length = 0; // 0 for an answer without a payload
    [[nodiscard]] Bytes received() const { return buffer.first(static_cast<std::size_t>(length)); }
};

class LedHVPacket : public LedPacket {
  public:
    // What a signed 16-bit payload length can say.
    static constexpr std::size_t kMaxPayload = 32767;

    // Frames are valid until the next one is packed.

    // Builds the frame of one command for the controller type at hand. Nothing is built for an unknown type
    // and for a payload that a frame cannot carry.
    virtual Bytes Pack(Ouint8 group, Ouint8 cmd, Bytes payload);

    // Checks an answer frame and copies its payload. Gives 0, 1, -1 to -5, or the controller's error value.
    virtual int Unpack(Bytes frame, Ouint8 group, Ouint8 cmd, Answer& answer);

    Bytes Pack5(Ouint8 group, Ouint8 cmd, Bytes payload);
    Bytes Pack6(Ouint8 group, Ouint8 cmd, Bytes payload);
    Bytes Pack6_OnlyHeader(Bytes application);
    Bytes PackPing3();
    Bytes Pack5H_DynamicArea(Ouint8 group, Ouint8 cmd, Bytes payload);
    // The envelope carries group and code inside its payload only.
    Bytes Pack6HnX_DynamicArea(Ouint8 group, Ouint8 cmd, Bytes payload);
    CData Pack6HnX_DynamicArea2(Ouint8 group, Ouint8 cmd, Bytes payload);

    // Notes why bytes that do not begin and end as a frame are none; -1.
    [[nodiscard]] int refuse(Bytes frame) const;

    // Opens the handshake's answer: 0, -1 (no frame) or -4 (unknown version). The controller type stands at
    // bytes 6 and 7 of body, which holds at least 8 bytes on success.
    int UnpackPing3(Bytes frame, ByteBuffer& body);

    Ouint8 m_PHYType = 0;
    Ouint8 m_protocoltype = 0; // echoed from the controller's latest good answer
    Ouint16 m_seqno = 2;       // even numbers 2 to 32766
    Ouint8 m_OptionBit1 = 0;
    Ouint8 m_Option = 0; // echoed from the latest good generation-6 answer

  private:
    [[nodiscard]] bool is_frame(Bytes frame) const;
    Ouint16 next_seqno();
    void link_header5(Bytes application);
    void link_header6(Bytes application);
    void envelope_header(Ouint32 length);
    Bytes stuffed() { return Transfer_Packet(m_body, m_room); }
    // received: the bytes of the frame before they were unstuffed
    int open_link(Bytes body, std::size_t received, Bytes& application);

    ByteBuffer m_application; // work buffers, kept from frame to frame
    ByteBuffer m_body;
    ByteBuffer m_room; // for the stuffed frame
};

} // namespace qm
