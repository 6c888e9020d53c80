#include "client.h"

#include "seeds.h"
#include "simulator/wire/open_request.h"

namespace qm::sim::test {
namespace {

constexpr std::size_t kLongest = 16384; // of an input that is worth keeping

// The commands in the stream as fuzz/session.cpp takes them, a moment apart.
ByteBuffer session_of(Bytes stream, Generation generation) {
    ByteBuffer session;
    FrameSplitter splitter(kLongest);
    while (const auto frame = splitter.next(stream)) {
        const auto* body = std::get_if<ByteBuffer>(&frame->body);
        const auto opened = open_request(body ? *body : ByteBuffer(), generation);
        const auto* request = std::get_if<Request>(&opened);
        if (!request || request->malformed || request->handshake) continue;
        if (request->group == 0xA7 && request->cmd == 0) qm::test::keep_seeds("area", request->payload());
        ByteWriter(session).u8(7).u8(request->group).u8(request->cmd);
        ByteWriter(session).u16(static_cast<unsigned>(request->payload().size())).bytes(request->payload());
    }
    return session;
}

} // namespace

Client::~Client() {
    if (m_sent.empty() || m_sent.size() > kLongest) return;
    ByteBuffer stream{0, 255};
    ByteWriter(stream).bytes(m_sent);
    qm::test::keep_seed("stream", stream);
    for (const Generation generation : {Generation::five, Generation::six})
        qm::test::keep_seeds("session", session_of(m_sent, generation));
}

} // namespace qm::sim::test
