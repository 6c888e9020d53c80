#include "Replay.h"

#include <sys/socket.h>

namespace qm::test {
namespace {

// The end of the connection goes out with the last bytes.
void send_cut(PeerConnection& client, Bytes answer, Cut cut) {
    const int more = cut.after == After::close ? MSG_MORE : 0;
    if (cut.bytes > 0) ::send(client.fd(), answer.data(), cut.bytes, MSG_NOSIGNAL | more);
    if (cut.after == After::silence) client.read_all();
    if (cut.after != After::close) client.reset();
}

} // namespace

std::vector<ByteBuffer> answers_to(const TalkingCall& call, Ouint16 controller) {
    std::vector<ByteBuffer> answers;
    ScriptedPeer between([&](PeerConnection& client) {
        PeerConnection behind(connected_socket(SOCK_STREAM, controller));
        for (ByteBuffer request; !(request = client.read_frame()).empty();) {
            behind.send(request);
            answers.push_back(behind.read_frame());
            client.send(answers.back());
        }
    });
    (void)call.run(between.port());
    between.join();
    return answers;
}

void Replay::begin(const std::vector<ByteBuffer>& answers, std::optional<Cut> cut) {
    const std::lock_guard lock(m_mutex);
    m_answers = &answers;
    m_cut = cut;
    m_next = 0;
}

void Replay::serve(PeerConnection& client) {
    while (!client.read_frame().empty())
        if (!answer(client)) return;
    client.reset();
}

// Whether the connection goes on.
bool Replay::answer(PeerConnection& client) {
    std::unique_lock lock(m_mutex);
    const std::size_t number = m_next++;
    if (number >= m_answers->size()) return false;
    const Bytes answer = (*m_answers)[number];
    const std::optional<Cut> cut = m_cut && m_cut->answer == number ? m_cut : std::nullopt;
    lock.unlock();
    if (cut)
        send_cut(client, answer, *cut);
    else
        client.send(answer);
    return !cut;
}

} // namespace qm::test
