#include "wire.h"

#include "seeds.h"

#include <functional>
#include <numeric>

namespace qm::test {
namespace {

ByteBuffer application_layer(const AnswerFrame& answer) {
    ByteBuffer out;
    ByteWriter(out)
        .u8(0)
        .u8(answer.group)
        .u8(answer.cmd)
        .u16(0)
        .u16(answer.error)
        .u16(answer.claimed_payload.value_or(static_cast<Ouint16>(answer.payload.size())))
        .bytes(answer.payload);
    return out;
}

// The first 8 bytes, which all answers have in common.
void common_header(ByteWriter& out, const AnswerFrame& answer) {
    out.u16(0x8000).u16(0xFFFE).u8(answer.version).u8(answer.protocol_type).u16(answer.device_type);
}

void checked_header(ByteWriter& out, const AnswerFrame& answer, Bytes application) {
    const bool generation6 = answer.version == 7;
    const std::size_t length = answer.claimed_data.value_or(static_cast<Ouint16>(application.size()));
    const Ouint16 crc = crc16(application.first(std::min(length, application.size())));
    common_header(out, answer);
    out.u8(0).u8(answer.option).u16(2).zeros(10);
    out.u16(static_cast<unsigned>(length)).u16(static_cast<unsigned>(crc ^ answer.crc_fault));
    if (generation6) out.u8(0);
}

ByteBuffer behind(ByteBuffer front, Bytes bytes) {
    front.insert(front.end(), bytes.begin(), bytes.end());
    return front;
}

// As fuzz/unpack.cpp reads it, and as fuzz/AnsweringLink.h does: to its command, and in a search.
void keep_seeds(const AnswerFrame& answer, Bytes frame) {
    constexpr Ouint8 kRaw = 3, kRoom = 64;
    keep_seed("unpack", behind({kRoom}, frame));
    const ByteBuffer one =
        behind({kRaw, static_cast<Ouint8>(frame.size()), static_cast<Ouint8>(frame.size() >> 8)}, frame);
    const ByteBuffer two = behind(one, one);
    const auto command = static_cast<Ouint8>(answer.group << 5 | (answer.cmd & 0x1F));
    keep_seed("answer", behind({command, kRoom, 0}, two));
    for (Ouint8 search = 0; search < 4; ++search) keep_seed("discovery", behind({search}, two));
}

} // namespace

Ouint16 crc16(Bytes bytes) {
    unsigned crc = 0;
    for (const Ouint8 b : bytes) {
        crc ^= b;
        for (int bit = 0; bit < 8; ++bit) crc = crc & 1 ? crc >> 1 ^ 0xA001 : crc >> 1;
    }
    return static_cast<Ouint16>(crc);
}

ByteBuffer stuff(Bytes body) {
    ByteBuffer out(8, 0xA5);
    for (const Ouint8 b : body) {
        if (b == 0x5A || b == 0xA5)
            out.insert(out.end(), {static_cast<Ouint8>(b + 1), 2});
        else if (b == 0x5B || b == 0xA6)
            out.insert(out.end(), {b, 1});
        else
            out.push_back(b);
    }
    out.push_back(0x5A);
    return out;
}

ByteBuffer restore(Bytes stuffed) {
    ByteBuffer body;
    for (std::size_t i = 0; i < stuffed.size(); ++i) {
        const Ouint8 b = stuffed[i], next = i + 1 < stuffed.size() ? stuffed[i + 1] : Ouint8{0};
        const bool pair = (b == 0x5B || b == 0xA6) && (next == 1 || next == 2);
        body.push_back(static_cast<Ouint8>(pair && next == 2 ? b - 1 : b));
        if (pair) ++i;
    }
    return body;
}

ByteBuffer unstuff(Bytes frame) {
    if (frame.size() < 9 || frame.back() != 0x5A) return {};
    return restore(frame.subspan(8, frame.size() - 9));
}

SentRequest parse_request(Bytes frame) {
    const ByteBuffer body = unstuff(frame);
    if (body.size() < 5) return {};
    const std::size_t header = body[4] == 5 ? 27 : 28;
    if (body.size() < header + 5 || body[header] != 1) return {};
    const std::size_t length = static_cast<std::size_t>(body[header + 3] | body[header + 4] << 8);
    if (length != body.size() - header - 5) return {};
    const auto payload = body.begin() + static_cast<std::ptrdiff_t>(header + 5);
    return {body[4], body[header + 1], body[header + 2], ByteBuffer(payload, body.end())};
}

std::optional<Bytes> application_of(Bytes body) {
    const Ouint8 version = body.size() < 5 ? Ouint8{0} : body[4];
    const std::size_t header = version == 5 ? 27 : version == 7 ? 28 : version == 0xF0 ? 16 : body.size() + 1;
    if (body.size() < header) return std::nullopt;
    const Bytes front = body.first(header), behind = body.subspan(header);
    if (version == 0xF0) return behind;
    const auto u16 = [body](std::size_t at) { return body[at] | body[at + 1] << 8; };
    const auto length = static_cast<std::size_t>(u16(22));
    const bool whole = length <= behind.size() && crc16(behind.first(length)) == u16(24);
    if (!whole || std::accumulate(front.begin(), front.end(), 0, std::bit_xor<>()) != 0) return std::nullopt;
    return behind.first(length);
}

ByteBuffer AnswerFrame::bytes() const {
    const ByteBuffer frame = stuff(body());
    keep_seeds(*this, frame);
    return frame;
}

ByteBuffer AnswerFrame::body() const {
    const ByteBuffer application = application_layer(*this);
    ByteBuffer out;
    ByteWriter writer(out);
    if (version == 0xF0) {
        common_header(writer, *this);
        writer.u32(0).u32(static_cast<Ouint32>(application.size()));
    } else {
        checked_header(writer, *this, application);
        const unsigned sum = std::accumulate(out.begin(), out.end(), 0U, std::bit_xor<>());
        writer.u8(sum ^ header_fault);
    }
    writer.bytes(application);
    return out;
}

} // namespace qm::test
