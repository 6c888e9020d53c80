// A host on the other end of a plain socket. Every wait is bounded.
#pragma once

#include "scripted_peer.h"

#include <cstdint>
#include <sys/socket.h>

namespace qm::sim::test {

class Client : public qm::test::PeerConnection {
  public:
    explicit Client(std::uint16_t port) : PeerConnection(qm::test::connected_socket(SOCK_STREAM, port)) {}

    // What arrives up to the first end byte, or to the end of the connection.
    ByteBuffer receive() { return read_frame(); }
    ByteBuffer ask(Bytes frame) {
        send(frame);
        return receive();
    }
};

} // namespace qm::sim::test
