#include "sent_request.h"

namespace qm::test {
namespace {

ByteBuffer unstuff(Bytes frame) {
    ByteBuffer body;
    if (frame.size() < 9 || frame.back() != 0x5A) return {};
    for (std::size_t i = 8; i + 1 < frame.size(); ++i) {
        const Ouint8 b = frame[i];
        if (b == 0x5B || b == 0xA6)
            body.push_back(static_cast<Ouint8>(b - (frame[++i] == 2 ? 1 : 0)));
        else
            body.push_back(b);
    }
    return body;
}

} // namespace

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

} // namespace qm::test
