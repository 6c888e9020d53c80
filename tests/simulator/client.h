// A host on the other end of a plain socket. Every wait is bounded.
#pragma once

#include "scripted_peer.h"

#include <cstdint>
#include <sys/socket.h>

namespace qm::sim::test {

class Client : public qm::test::PeerConnection {
  public:
    explicit Client(std::uint16_t port) : PeerConnection(qm::test::connected_socket(SOCK_STREAM, port)) {}
    Client(Client&&) = default;
    Client& operator=(Client&&) = default;
    // Keeps what was sent as seeds.
    ~Client();

    void send(Bytes bytes) {
        ByteWriter(m_sent).bytes(bytes);
        PeerConnection::send(bytes);
    }
    // What arrives up to the first end byte, or to the end of the connection.
    ByteBuffer receive() { return read_frame(); }
    ByteBuffer ask(Bytes frame) {
        send(frame);
        return receive();
    }

  private:
    ByteBuffer m_sent;
};

} // namespace qm::sim::test
