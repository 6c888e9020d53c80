// A controller on 127.0.0.1 that does exactly what a test tells it.
#pragma once

#include "support/Descriptor.h"
#include "support/bytes.h"

#include <functional>
#include <thread>

namespace qm::test {

// One connection. Every wait is bounded, so that a fault fails a test and hangs none.
class PeerConnection {
  public:
    explicit PeerConnection(Descriptor fd);

    // Up to the first end byte, which a stuffed frame holds once; what came until then when the client
    // closes.
    ByteBuffer read_frame();
    // Until the client closes.
    ByteBuffer read_all();
    void send(Bytes bytes);
    // How the other side ends the connection; none when bytes or nothing came.
    enum class End { closed, reset, none };
    End wait_for_end();
    // Closes so that the client sees a reset.
    void reset();
    [[nodiscard]] int fd() const { return m_fd.get(); }

  private:
    Descriptor m_fd;
};

// Serves one connection after the other on a thread of its own, each with the same script, until it is
// destroyed. A connection is closed when its script returns. What scripts have noted may be read after
// join().
class ScriptedPeer {
  public:
    using Script = std::function<void(PeerConnection&)>;

    explicit ScriptedPeer(Script script);
    ~ScriptedPeer() { join(); }
    ScriptedPeer(const ScriptedPeer&) = delete;
    ScriptedPeer& operator=(const ScriptedPeer&) = delete;

    [[nodiscard]] Ouint16 port() const { return m_port; }
    void join();

    // Answers the n-th request of a connection with the n-th of the answers, then waits for the client to
    // close. The requests are appended to *requests when there is one.
    static Script answering(std::vector<ByteBuffer> answers, std::vector<ByteBuffer>* requests = nullptr);

  private:
    void serve(const Script& script);

    Descriptor m_listener;
    Ouint16 m_port;
    std::thread m_thread;
};

// A socket bound to a free port of 127.0.0.1, not listening: connections to it are refused.
Descriptor bound_socket();
Ouint16 port_of(const Descriptor& socket);
// A socket of that type, connected to the port of 127.0.0.1.
Descriptor connected_socket(int type, Ouint16 port);

} // namespace qm::test
