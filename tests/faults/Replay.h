// A controller that answers one call again as another has answered it, but for one answer.
#pragma once

#include "scripted_peer.h"
#include "talking_calls.h"

#include <mutex>
#include <optional>

namespace qm::test {

// How an answer that is cut goes on.
enum class After { close, reset, silence };

struct Cut {
    std::size_t answer = 0; // of the call, over all its connections
    std::size_t bytes = 0;  // that are sent of it
    After after = After::close;
};

// What the controller at that port answers to the call, frame by frame.
std::vector<ByteBuffer> answers_to(const TalkingCall& call, Ouint16 controller);

// Connections end with a reset, which leaves no port behind that others would have to do without for a
// minute.
class Replay {
  public:
    [[nodiscard]] Ouint16 port() const { return m_peer.port(); }
    // For the next call. The answers must live until it has ended.
    void begin(const std::vector<ByteBuffer>& answers, std::optional<Cut> cut);

  private:
    void serve(PeerConnection& client);
    bool answer(PeerConnection& client);

    std::mutex m_mutex; // guards the next three
    const std::vector<ByteBuffer>* m_answers = nullptr;
    std::optional<Cut> m_cut;
    std::size_t m_next = 0;
    ScriptedPeer m_peer{[this](PeerConnection& client) { serve(client); }};
};

} // namespace qm::test
