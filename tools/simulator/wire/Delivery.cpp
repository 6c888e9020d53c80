#include "simulator/wire/Delivery.h"

#include "cmdPacket/LedPacket.h"
#include "global.h"
#include "support/controller_types.h"

namespace qm::sim {
namespace {

constexpr std::uint8_t kGlobalGroup = 0xA0, kAck = 0, kNack = 1;
constexpr std::uint8_t kAnswered = 0x80; // added to the code of the command that is answered
constexpr std::uint8_t kProtocolType = 2, kOption = 2;
constexpr std::size_t kCrcAt = 24;
constexpr std::size_t kOversize = 4096, kFalseLength = 1000;

struct Fields {
    std::uint8_t group = kGlobalGroup, cmd = kAck;
    std::uint16_t error = 0;
    ByteBuffer payload;
    std::size_t length_claimed = 0; // beyond the payload's own
};

Fields fields_of(const Request& request, const Reply& reply) {
    Fields fields;
    if (const auto* error = std::get_if<ErrorValue>(&reply)) {
        fields.cmd = kNack;
        fields.error = static_cast<std::uint16_t>(*error);
    } else if (const auto* payload = std::get_if<ByteBuffer>(&reply)) {
        fields.group = request.group;
        fields.cmd = static_cast<std::uint8_t>(request.cmd + kAnswered);
        fields.payload = *payload;
    }
    return fields;
}

// Hosts do not look at the length of a plain acknowledgement: faults of length need an answer with a payload.
void spoil_fields(Fields& fields, const Request& request, FaultKind kind) {
    if (kind != FaultKind::oversize && kind != FaultKind::false_length && kind != FaultKind::wrong_code)
        return;
    fields.group = request.group;
    fields.cmd = static_cast<std::uint8_t>(request.cmd + kAnswered);
    if (kind == FaultKind::wrong_code) ++fields.cmd;
    if (kind == FaultKind::oversize) fields.payload.resize(fields.payload.size() + kOversize, 0xEE);
    if (kind == FaultKind::false_length) fields.length_claimed = kFalseLength;
}

// Reserved, cmdgroup, cmd, status u16, Error u16, datalen u16, payload.
ByteBuffer application_of(const Fields& fields) {
    ByteBuffer application;
    ByteWriter out(application);
    out.u8(0).u8(fields.group).u8(fields.cmd).u16(0).u16(fields.error);
    out.u16(static_cast<std::uint16_t>(fields.payload.size() + fields.length_claimed)).bytes(fields.payload);
    return application;
}

// dstaddr u16, srcaddr u16, protocolver, protocoltype, devicetype u16, phytype, then in generation 5 a
// reserved byte, msgseq u16, a reserved byte and framelenmax of 8 bits, in generation 6 the option byte,
// msgseq u16 and framelenmax of 16 bits; encryptiontype, randomnumber, secret 6, datalen u16,
// datachecksum u16, in generation 6 a reserved byte; headerchecksum.
ByteBuffer link_header(const Request& request, Sender sender, Bytes application, bool spoil_crc) {
    const bool five = generation_of(sender.type) == Generation::five;
    ByteBuffer header;
    ByteWriter out(header);
    out.u16(request.source).u16(sender.address).u8(five ? 5 : 7).u8(kProtocolType).u16(sender.type).u8(0);
    out.u8(five ? 0 : kOption).u16(request.sequence).u16(five ? 0x8400 : 0x00FF).u8(0x96).u8(0).zeros(6);
    out.u16(static_cast<std::uint16_t>(application.size())).u16(calc_crc(application));
    if (spoil_crc) header[kCrcAt] ^= 0xFFU;
    if (!five) out.u8(0);
    header.push_back(calc_xor(header));
    return header;
}

ByteBuffer frame_of(const Fields& fields, const Request& request, Sender sender,
                    const std::optional<Fault>& fault) {
    const ByteBuffer application = application_of(fields);
    ByteBuffer body = link_header(request, sender, application, fault && fault->kind == FaultKind::bad_crc);
    if (fault && fault->kind == FaultKind::bad_header) body.back() ^= 0xFFU;
    ByteWriter(body).bytes(application);
    ByteBuffer frame;
    frame.resize(LedPacket::Transfer_Packet(body, frame).size());
    return frame;
}

ByteBuffer garbage() {
    ByteBuffer bytes(64);
    for (std::size_t i = 0; i < bytes.size(); ++i) bytes[i] = static_cast<std::uint8_t>(37 * i + 11);
    return bytes;
}

void spoil_delivery(Delivery& delivery, const Fault& fault) {
    const FaultKind kind = fault.kind;
    if (kind == FaultKind::silence || kind == FaultKind::close || kind == FaultKind::reset)
        delivery.bytes.clear();
    if (kind == FaultKind::close) delivery.then = Delivery::Then::close;
    if (kind == FaultKind::reset) delivery.then = Delivery::Then::reset;
    if (kind == FaultKind::garbage) delivery.bytes = garbage();
    if (kind == FaultKind::delay) delivery.late = fault.delay;
    delivery.first = delivery.bytes.size();
    if (kind == FaultKind::split) {
        delivery.first /= 2;
        delivery.pause = fault.delay;
    }
}

} // namespace

Delivery deliver(const Request& request, const Reply& reply, Sender sender,
                 const std::optional<Fault>& fault) {
    Fields fields = fields_of(request, reply);
    if (fault) spoil_fields(fields, request, fault->kind);
    Delivery delivery;
    delivery.bytes = frame_of(fields, request, sender, fault);
    delivery.first = delivery.bytes.size();
    if (fault) spoil_delivery(delivery, *fault);
    return delivery;
}

} // namespace qm::sim
