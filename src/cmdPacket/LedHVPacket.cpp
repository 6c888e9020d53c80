#include "cmdPacket/LedHVPacket.h"

#include "global.h"
#include "support/controller_types.h"
#include "support/message.h"
#include "support/reason.h"

#include <cstdio>

namespace qm {
namespace {

constexpr Ouint16 kHostAddress = 0x8000;
constexpr Ouint16 kLastSeqno = 32766;
constexpr Ouint8 kVersion5 = 5, kVersion6 = 7, kVersionEnvelope = 0xF0;

// Bytes from the first of a link header to its checksum byte, and to its end.
struct LinkLayout {
    std::size_t checksum, size;
};
constexpr std::size_t kDataLenOffset = 22, kCrcOffset = 24; // the same in both generations
constexpr LinkLayout kLink5{26, 27}, kLink6{27, 28};
constexpr std::size_t kEnvelopeSize = 16;
constexpr std::size_t kMaxApplication = 0xFFFF; // what a header's length field can say
constexpr std::size_t kMaxStuffed = 0x7FFFFFFF; // what a send can take

Ouint16 u16_at(Bytes bytes, std::size_t offset) {
    return static_cast<Ouint16>(bytes[offset] | bytes[offset + 1] << 8);
}

void write_application(ByteBuffer& application, Ouint8 group, Ouint8 cmd, Bytes payload) {
    application.clear();
    ByteWriter out(application);
    out.u8(1).u8(group).u8(cmd).u16(static_cast<Ouint16>(payload.size())).bytes(payload);
}

Bytes too_long(std::size_t size) {
    (void)fail(QM_FAILED, "A frame cannot carry %zu bytes.", size);
    return {};
}

constexpr char kNoEnd[] = "its end is missing", kShort[] = "its header is longer",
               kAnnouncesMore[] = "its lengths announce more";

// An answer that ends too soon.
int cut_at(std::size_t received, int status, const char* sign) {
    return fail(status, "The answer was cut at %zu bytes: %s.", received, sign);
}

int unknown_version(Ouint8 version) {
    return fail(QM_BAD_VERSION, "The answer is of version %d of the link protocol, which is not known.",
                version);
}

int other_command(Ouint8 group, Ouint8 cmd) {
    return fail(QM_WRONG_ANSWER, "The answer is to another command: group 0x%02X, code 0x%02X.", group, cmd);
}

// Writes the XOR of everything up to its own, last, byte.
void close_header(ByteBuffer& body) { body.push_back(calc_xor(body)); }

} // namespace

Ouint16 LedHVPacket::next_seqno() {
    const Ouint16 seqno = m_seqno;
    m_seqno = static_cast<Ouint16>(m_seqno + 2);
    if (m_seqno > kLastSeqno) m_seqno = 2;
    return seqno;
}

// Generation 5, 27 bytes: dstaddr u16, srcaddr u16, protocolver, protocoltype, devicetype u16, phytype,
// reserved, msgseq u16, reserved, framelenmax u8, encryptiontype, randomnumber, secret 6, datalen u16,
// datachecksum u16, headerchecksum.
void LedHVPacket::link_header5(Bytes application) {
    m_body.clear();
    ByteWriter out(m_body);
    out.u16(m_DstAddr).u16(kHostAddress).u8(kVersion5).u8(m_protocoltype).u16(m_DeviceType).u8(m_PHYType);
    out.u8(0).u16(next_seqno()).u8(0).u8(0x84).u8(0x96).u8(0).zeros(6);
    out.u16(static_cast<Ouint16>(application.size())).u16(calc_crc(application));
    close_header(m_body);
    out.bytes(application);
}

// Generation 6, 28 bytes: as generation 5, but an option byte for the first reserved one, framelenmax of 16
// bits in the place of the second, and a reserved byte before the checksum.
void LedHVPacket::link_header6(Bytes application) {
    m_body.clear();
    ByteWriter out(m_body);
    out.u16(m_DstAddr).u16(kHostAddress).u8(kVersion6).u8(m_protocoltype).u16(m_DeviceType).u8(m_PHYType);
    out.u8((m_OptionBit1 | 0x02U) & m_Option).u16(next_seqno()).u16(0x00FF).u8(0x96).u8(0).zeros(6);
    out.u16(static_cast<Ouint16>(application.size())).u16(calc_crc(application)).u8(0);
    close_header(m_body);
    out.bytes(application);
}

// Envelope, 16 bytes: dstaddr u16, srcaddr u16, protocolver, reserved, devicetype u16, reserved u32,
// datalen u32.
void LedHVPacket::envelope_header(Ouint32 length) {
    m_body.clear();
    m_body.reserve(kEnvelopeSize + std::size_t{length} + sizeof(Ouint16)); // with a CRC behind
    ByteWriter out(m_body);
    out.u16(m_DstAddr).u16(kHostAddress).u8(kVersionEnvelope).u8(0).u16(m_DeviceType).u32(0).u32(length);
}

Bytes LedHVPacket::Pack(Ouint8 group, Ouint8 cmd, Bytes payload) {
    if (payload.size() > kMaxPayload) return too_long(payload.size());
    const Generation generation = generation_of(m_DeviceType);
    if (generation == Generation::five) return Pack5(group, cmd, payload);
    if (generation == Generation::six) return Pack6(group, cmd, payload);
    (void)fail(QM_FAILED, "The controller says that it is of type 0x%04X, which is of neither generation.",
               m_DeviceType);
    return {};
}

Bytes LedHVPacket::Pack5(Ouint8 group, Ouint8 cmd, Bytes payload) {
    write_application(m_application, group, cmd, payload);
    if (m_application.size() > kMaxApplication) return too_long(m_application.size());
    link_header5(m_application);
    return stuffed();
}

Bytes LedHVPacket::Pack6(Ouint8 group, Ouint8 cmd, Bytes payload) {
    write_application(m_application, group, cmd, payload);
    return Pack6_OnlyHeader(m_application);
}

Bytes LedHVPacket::Pack6_OnlyHeader(Bytes application) {
    if (application.size() > kMaxApplication) return too_long(application.size());
    link_header6(application);
    return stuffed();
}

// Ping, 15 + 4 bytes: dstaddr u16, srcaddr u16, protocolver, protocoltype, devicetype u8, phytype,
// msgseq u16, datalen i16, datachecksum u16, headerchecksum; then cmdgroup, cmd, datalen u16.
Bytes LedHVPacket::PackPing3() {
    constexpr Ouint8 application[] = {hv_GRP_CONF, 0, 0, 0};
    m_body.clear();
    ByteWriter writer(m_body);
    writer.u16(0xFFFE).u16(kHostAddress).u8(0).u8(0).u8(0xFE).u8(1).u16(next_seqno());
    writer.u16(sizeof application).u16(calc_crc(application));
    close_header(m_body);
    writer.bytes(application);
    return stuffed();
}

Bytes LedHVPacket::Pack5H_DynamicArea(Ouint8 group, Ouint8 cmd, Bytes payload) {
    envelope_header(static_cast<Ouint32>(9 + payload.size()));
    ByteWriter writer(m_body);
    writer.u8(1).u8(group).u8(cmd).u16(0).u32(static_cast<Ouint32>(payload.size())).bytes(payload);
    return stuffed();
}

Bytes LedHVPacket::Pack6HnX_DynamicArea(Ouint8, Ouint8, Bytes payload) {
    envelope_header(static_cast<Ouint32>(payload.size()));
    ByteWriter writer(m_body);
    writer.bytes(payload).u16(calc_crc(m_body));
    return stuffed();
}

CData LedHVPacket::Pack6HnX_DynamicArea2(Ouint8, Ouint8, Bytes payload) {
    envelope_header(static_cast<Ouint32>(payload.size()));
    ByteWriter writer(m_body);
    writer.bytes(payload).u16(calc_crc(m_body));
    const std::size_t expected = payload.size() + kEnvelopeSize + 2;
    if (m_body.size() != expected) {
        say("src_len = %d; oData.m_nDataLen = %d \n", static_cast<int>(m_body.size()),
            static_cast<int>(expected));
        return CData::error();
    }
    const std::size_t size = stuffed_length(m_body);
    if (size > kMaxStuffed) return too_long(size), CData::error();
    CData frame(static_cast<Ouint32>(size));
    const std::size_t length = Transfer_Packet(m_body, frame.m_pData.data());
    if (length != frame.m_nDataLen) {
        say("tmp_len = %d; oDataRet.m_nDataLen = %d \n", static_cast<int>(length),
            static_cast<int>(frame.m_nDataLen));
        return CData::error();
    }
    return frame;
}

bool LedHVPacket::is_frame(Bytes frame) const {
    return !frame.empty() && frame.front() == begin_flag && frame.back() == end_flag;
}

int LedHVPacket::refuse(Bytes frame) const {
    if (frame.empty()) return fail(QM_FAILED, "Nobody answered within 3 s.");
    if (frame.front() == begin_flag) return cut_at(frame.size(), QM_FAILED, kNoEnd);
    char first[3 * 8 + 1] = {};
    for (std::size_t i = 0; i < std::min<std::size_t>(frame.size(), 8); ++i)
        std::snprintf(first + 3 * i, 4, " %02X", frame[i]);
    return fail(QM_FAILED, "The answer is not a frame: its %zu bytes begin with%s.", frame.size(), first);
}

// Checks the link header of an answer body and finds the application layer behind it.
int LedHVPacket::open_link(Bytes body, std::size_t received, Bytes& application) {
    if (body.size() < 5) return cut_at(received, QM_FAILED, kShort);
    const Ouint8 version = body[4];
    if (version == kVersionEnvelope) {
        if (body.size() < kEnvelopeSize) return cut_at(received, QM_FAILED, kShort);
        application = body.subspan(kEnvelopeSize);
        return QM_OK;
    }
    if (version != kVersion5 && version != kVersion6) return unknown_version(version);

    const LinkLayout& link = version == kVersion5 ? kLink5 : kLink6;
    if (body.size() < link.size) return cut_at(received, QM_BAD_HEADER, kShort);
    if (calc_xor(body.first(link.checksum)) != body[link.checksum])
        return fail(QM_BAD_HEADER, "The header checksum of the answer is wrong.");
    const std::size_t length = u16_at(body, kDataLenOffset);
    if (length > body.size() - link.size) return cut_at(received, QM_BAD_CRC, kAnnouncesMore);
    application = body.subspan(link.size, length);
    if (calc_crc(application) != u16_at(body, kCrcOffset))
        return fail(QM_BAD_CRC, "The CRC of the answer is wrong.");

    m_protocoltype = body[5];
    if (version == kVersion6) m_Option = body[9];
    return QM_OK;
}

// Answer header, 9 bytes: reserved, cmdgroup, cmd, status u16, Error u16, datalen u16.
int LedHVPacket::Unpack(Bytes frame, Ouint8 group, Ouint8 cmd, Answer& answer) {
    answer.length = 0;
    if (!is_frame(frame)) return refuse(frame);
    Restore_Packet(frame, m_body);
    Bytes application;
    if (const int code = open_link(m_body, frame.size(), application); code != QM_OK) return code;
    // Lengths that claim more than came: as a wrong CRC where there is one.
    const int cut = m_body[4] == kVersionEnvelope ? QM_FAILED : QM_BAD_CRC;

    ByteReader reader(application);
    reader.skip(1);
    const Ouint8 answerGroup = reader.u8();
    const Ouint8 answerCmd = reader.u8();
    reader.skip(2);
    const Ouint16 error = reader.u16();
    const std::size_t length = reader.u16();
    if (!reader.ok()) return cut_at(frame.size(), cut, kShort);

    if (answerGroup != group) {
        if (answerGroup != hv_GRP_Global) return other_command(answerGroup, answerCmd);
        if (answerCmd == hv_ACK) return QM_OK;
        if (answerCmd == hv_NACK) return fail(error, "The controller refused with error %d.", error);
        return other_command(answerGroup, answerCmd);
    }
    if (answerCmd != cmd + 0x80) return other_command(answerGroup, answerCmd);
    if (length > reader.left()) return cut_at(frame.size(), cut, kAnnouncesMore);
    if (answer.buffer.empty()) {
        say("nCmdDataLen <= %d \n ", 0);
        return fail(QM_FAILED,
                    "The controller answered with %zu bytes where the call takes an acknowledgement only.",
                    length);
    }
    const std::size_t copied = std::min(length, answer.buffer.size());
    std::copy_n(reader.rest().begin(), copied, answer.buffer.begin());
    answer.length = static_cast<int>(copied);
    if (copied == length) return QM_OK;
    say("return Data Length too long!!! Control Card Return:cmd_header->datalen = %d; but membuff len = "
        "%d;\n ",
        static_cast<int>(length), static_cast<int>(copied));
    return fail(QM_TRUNCATED, "The answer has %zu bytes, and there is room for %zu.", length, copied);
}

int LedHVPacket::UnpackPing3(Bytes frame, ByteBuffer& body) {
    if (!is_frame(frame)) return refuse(frame);
    Restore_Packet(frame, body);
    if (body.size() < 5) return cut_at(frame.size(), QM_FAILED, kShort);
    if (body[4] != kVersion5 && body[4] != kVersion6) return unknown_version(body[4]);
    if (body.size() < 8) return cut_at(frame.size(), QM_FAILED, kShort);
    m_protocoltype = body[5];
    return QM_OK;
}

} // namespace qm
