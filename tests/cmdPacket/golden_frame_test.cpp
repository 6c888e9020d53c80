// Requests byte for byte, as controllers expect them. The CRCs were worked out apart from this code.
#include "cmdPacket/LedHVPacket.h"
#include "hex.h"

#include <set>

namespace qm::test {
namespace {

// A payload that needs every escape, and how it looks on the wire.
const ByteBuffer kPayload = hex("24 20 5A 5B A5 A6 01");
#define STUFFED_PAYLOAD "24 20 5B 02 5B 01 A6 02 A6 01 01"
#define START "A5*8 FE FF 00 80 "

struct Packet : LedHVPacket {
    explicit Packet(Ouint16 type) { m_DeviceType = type; }
};

TEST(GoldenFrame, OfEveryKind) {
    struct {
        const char* kind;
        Ouint16 controller_type;
        Bytes (*build)(Packet&);
        const char* frame;
    } const cases[] = {
        {"generation 5: CRC 8BF1 over 12 application bytes, header XOR B2", 0x0151,
         [](Packet& packet) { return packet.Pack(0xA2, 0x02, kPayload); },
         START "05 00 51 01 00 00 02 00 00 84 96 00 00*6 0C 00 F1 8B B2 01 A2 02 07 00 " STUFFED_PAYLOAD
               " 5A"},
        {"generation 6 without payload: CRC B8BF, header XOR 8F", 0x0262,
         [](Packet& packet) { return packet.Pack(0xA2, 0x02, {}); },
         START "07 00 62 02 00 00 02 00 FF 00 96 00 00*6 05 00 BF B8 00 8F 01 A2 02 00 00 5A"},
        {"generation 6 around the caller's application layer: CRC 0882, header XOR 00", 0x0262,
         [](Packet& packet) { return packet.Pack6_OnlyHeader(kPayload); },
         START "07 00 62 02 00 00 02 00 FF 00 96 00 00*6 07 00 82 08 00 00 " STUFFED_PAYLOAD " 5A"},
        {"ping, the same for every controller: CRC B823, header XOR E3", 0x0262,
         [](Packet& packet) { return packet.PackPing3(); },
         START "00 00 FE 01 02 00 04 00 23 B8 E3 A2 00 00 00 5A"},
        {"one dynamic area, without CRC", 0x0262,
         [](Packet& packet) { return packet.Pack5H_DynamicArea(0xA7, 0x00, kPayload); },
         START "F0 00 62 02 00*4 10 00 00 00 01 A7 00 00 00 07 00 00 00 " STUFFED_PAYLOAD " 5A"},
        {"envelope: CRC CF7B over header and payload", 0x0262,
         [](Packet& packet) { return packet.Pack6HnX_DynamicArea(0xA7, 0x00, kPayload); },
         START "F0 00 62 02 00*4 07 00 00 00 " STUFFED_PAYLOAD " 7B CF 5A"},
        {"envelope of generation 5, with a length of its own before the payload", 0x0154,
         [](Packet& packet) { return packet.Pack5H_DynamicArea(0xA7, 0x00, kPayload); },
         START "F0 00 54 01 00*4 10 00 00 00 01 A7 00 00 00 07 00 00 00 " STUFFED_PAYLOAD " 5A"},
        {"envelope for large payloads", 0x0262,
         [](Packet& packet) {
             static CData frame;
             frame = packet.Pack6HnX_DynamicArea2(0xA7, 0x00, kPayload);
             return frame.bytes();
         },
         START "F0 00 62 02 00*4 07 00 00 00 " STUFFED_PAYLOAD " 7B CF 5A"},
    };
    for (const auto& c : cases) {
        Packet packet(c.controller_type);
        const Bytes out = c.build(packet);
        EXPECT_THAT(out, is_hex(c.frame)) << c.kind;
        EXPECT_EQ(packet.m_seqno, out[8 + 4] == 0xF0 ? 2 : 4) << c.kind; // envelopes carry no number
    }
}

TEST(GoldenFrame, HeaderFieldsThatNeedEscapes) {
    Packet packet(0x5A74);
    packet.m_DstAddr = 0xA5A6;
    packet.m_protocoltype = 0x5B;
    packet.m_PHYType = 0xA6;
    packet.m_Option = 0xFF;
    packet.m_seqno = 0x5A5A;
    const Bytes out = packet.Pack(0xA1, 0x03, kPayload); // CRC 0AAF, header XOR 95
    EXPECT_THAT(out, is_hex("A5*8 A6 01 A6 02 00 80 07 5B 01 74 5B 02 A6 01 02 5B 02 5B 02 FF 00 96 00 00*6 "
                            "0C 00 AF 0A 00 95 01 A1 03 07 00 " STUFFED_PAYLOAD " 5A"));
}

TEST(GoldenFrame, ChecksumsThatNeedEscapes) {
    Packet packet(0x0151);
    packet.m_protocoltype = 1;
    packet.m_seqno = 32764;
    (void)packet.Pack(0xA3, 0x00, {});
    const Bytes out = packet.Pack(0xA3, 0x00, hex("95 09")); // CRC BDA6, header XOR 5A
    EXPECT_THAT(out, is_hex(START "05 01 51 01 00 00 FE 7F 00 84 96 00 00*6 07 00 A6 01 BD 5B 02 "
                                  "01 A3 00 02 00 95 09 5A"));
    EXPECT_EQ(packet.m_seqno, 2); // the even numbers start again
}

TEST(RequestOptions, OnlyBitsThatTheControllerOfferedAreAskedFor) {
    struct {
        Ouint8 wanted, offered, sent;
    } const cases[] = {{0, 0, 0}, {0, 0xFF, 2}, {0, 0xFD, 0}, {0x10, 0x12, 0x12}, {0x10, 0x01, 0}};
    for (const auto& c : cases) {
        Packet packet(0x0262);
        packet.m_OptionBit1 = c.wanted;
        packet.m_Option = c.offered;
        const Bytes out = packet.Pack(0xA2, 0x02, {});
        EXPECT_EQ(out[8 + 9], c.sent) << int{c.wanted} << " of " << int{c.offered};
    }
}

TEST(Framing, FollowsTheLowByteOfTheControllerType) {
    const std::set<unsigned> generation5{0x50, 0x51, 0x52, 0x53, 0x54, 0x55, 0x5E};
    const std::set<unsigned> generation6{0x58, 0x62, 0x63, 0x64, 0x66, 0x74};
    for (unsigned type = 0; type < 256; ++type) {
        Packet packet(static_cast<Ouint16>(0x6200 | type));
        const Bytes out = packet.Pack(0xA2, 0, {});
        const int version = generation5.contains(type) ? 5 : generation6.contains(type) ? 7 : 0;
        EXPECT_EQ(out.empty() ? 0 : out[8 + 4], version) << type;
        EXPECT_EQ(packet.m_seqno, version ? 4 : 2) << type;
    }
}

TEST(Framing, PayloadThatAFrameCannotCarryBuildsNothing) {
    for (const Ouint16 type : {Ouint16{0x0151}, Ouint16{0x0262}}) {
        Packet packet(type);
        EXPECT_GT(packet.Pack(0xA1, 3, ByteBuffer(32767, 0x5A)).size(), 2 * 32767U);
        EXPECT_TRUE(packet.Pack(0xA1, 3, ByteBuffer(32768)).empty());
    }
}

} // namespace
} // namespace qm::test
