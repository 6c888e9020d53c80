#include "simulator/wire/open_request.h"

#include "global.h"

namespace qm::sim {
namespace {

using Opened = std::variant<Request, BadFrame>;

constexpr std::uint8_t kHandshake = 0, kVersion5 = 5, kVersion6 = 7, kEnvelope = 0xF0;
constexpr std::size_t kVersionAt = 4, kEnvelopeHeader = 16;
constexpr BadFrame kWrongLength{"its length field disagrees with its length"};
constexpr BadFrame kWrongGeneration{"it is framed for the other generation"};
constexpr BadFrame kWrongCrc{"its CRC is wrong"};

// A link header: where its fields stand, its checksum byte being the last of it.
struct Link {
    std::size_t sequence, length, crc, size;
};
constexpr Link kPingLink{8, 10, 12, 15}, kLink5{10, 22, 24, 27}, kLink6{10, 22, 24, 28};

// A command's own header: whether it begins with a byte that says if an answer is wanted, and where the field
// stands that gives the length of the payload, if there is one.
struct CommandHeader {
    std::size_t size;
    bool says_if_answered;
    std::size_t length_at, length_width;
};
constexpr CommandHeader kPingCommand{4, false, 2, 2}, kCommand{5, true, 3, 2}, kBareCommand{5, true, 0, 0},
    kAreaCommand{9, true, 5, 4};

std::size_t field(Bytes bytes, std::size_t at, std::size_t width) {
    std::size_t value = 0;
    for (std::size_t i = 0; i < width; ++i) value |= std::size_t{bytes[at + i]} << (8 * i);
    return value;
}

Request open_command(Bytes application, const CommandHeader& header) {
    Request request;
    request.application.assign(application.begin(), application.end());
    request.malformed = application.size() < header.size;
    if (request.malformed) return request;
    const std::size_t group_at = header.says_if_answered ? 1 : 0;
    request.wants_answer = !header.says_if_answered || application[0] != 0;
    request.group = application[group_at];
    request.cmd = application[group_at + 1];
    request.payload_at = header.size;
    request.malformed =
        header.length_width != 0 &&
        field(application, header.length_at, header.length_width) != application.size() - header.size;
    return request;
}

Opened open_link(Bytes body, const Link& link, const CommandHeader& header) {
    if (body.size() < link.size) return BadFrame{"it is shorter than its header"};
    if (calc_xor(body.first(link.size - 1)) != body[link.size - 1])
        return BadFrame{"its header checksum is wrong"};
    const Bytes application = body.subspan(link.size);
    if (field(body, link.length, 2) != application.size()) return kWrongLength;
    if (calc_crc(application) != field(body, link.crc, 2)) return kWrongCrc;
    Request request = open_command(application, header);
    request.sequence = static_cast<std::uint16_t>(field(body, link.sequence, 2));
    return request;
}

Opened open_plain(Bytes body, Generation generation) {
    switch (body[kVersionAt]) {
    case kHandshake: {
        Opened opened = open_link(body, kPingLink, kPingCommand);
        if (auto* request = std::get_if<Request>(&opened)) request->handshake = true;
        return opened;
    }
    case kVersion5:
        if (generation != Generation::five) return kWrongGeneration;
        return open_link(body, kLink5, kCommand);
    case kVersion6:
        if (generation != Generation::six) return kWrongGeneration;
        return open_link(body, kLink6, kCommand);
    default:
        return BadFrame{"its link protocol version is unknown"};
    }
}

// The envelope without a CRC, of a dynamic area in the form of generation 5. Its lengths are all that vouches
// for it.
Opened open_bare_envelope(Bytes body, Generation generation) {
    if (body.size() < kEnvelopeHeader || field(body, 12, 4) != body.size() - kEnvelopeHeader)
        return kWrongLength;
    if (generation != Generation::five) return kWrongGeneration;
    Request request = open_command(body.subspan(kEnvelopeHeader), kAreaCommand);
    if (request.malformed) return kWrongLength;
    return request;
}

// A whole stuffed frame inside an envelope.
Opened open_inner(Bytes stuffed, Generation generation) {
    FrameSplitter splitter(stuffed.size());
    const auto inner = splitter.next(stuffed);
    const auto* body = inner ? std::get_if<ByteBuffer>(&inner->body) : nullptr;
    if (!body || body->size() <= kVersionAt || !stuffed.empty())
        return BadFrame{"the frame inside the envelope is broken"};
    if ((*body)[kVersionAt] == kEnvelope) return open_bare_envelope(*body, generation);
    return open_plain(*body, generation);
}

Opened open_envelope(Bytes body, Generation generation) {
    constexpr std::size_t kCrc = 2;
    if (body.size() < kEnvelopeHeader + kCrc || field(body, 12, 4) != body.size() - kEnvelopeHeader - kCrc)
        return open_bare_envelope(body, generation);
    const std::size_t crc_at = body.size() - kCrc;
    if (calc_crc(body.first(crc_at)) != field(body, crc_at, kCrc)) return kWrongCrc;
    const Bytes payload = body.subspan(kEnvelopeHeader, crc_at - kEnvelopeHeader);
    if (!payload.empty() && payload[0] == 0xA5) return open_inner(payload, generation);
    return open_command(payload, kBareCommand);
}

} // namespace

Opened open_request(Bytes body, Generation generation) {
    if (body.size() <= kVersionAt) return BadFrame{"it is shorter than its header"};
    Opened opened =
        body[kVersionAt] == kEnvelope ? open_envelope(body, generation) : open_plain(body, generation);
    if (auto* request = std::get_if<Request>(&opened))
        request->source = static_cast<std::uint16_t>(field(body, 2, 2));
    return opened;
}

} // namespace qm::sim
