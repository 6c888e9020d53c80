// A host on the other end of a plain socket. Every wait is bounded.
#pragma once

#include "support/Descriptor.h"
#include "support/bytes.h"

namespace qm::sim::test {

class Client {
  public:
    explicit Client(std::uint16_t port);

    void send(Bytes bytes);
    // What arrives up to the first end byte, or to the end of the connection.
    ByteBuffer receive();
    ByteBuffer ask(Bytes frame) {
        send(frame);
        return receive();
    }

    enum class End { closed, reset, none };
    // How the controller ends the connection; none when bytes or nothing came.
    End wait_for_end();

  private:
    Descriptor m_socket;
};

} // namespace qm::sim::test
