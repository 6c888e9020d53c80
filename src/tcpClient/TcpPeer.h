// One TCP connection to a controller.
#pragma once

#include "cmdPacket/command.h"
#include "support/Descriptor.h"

#include <netinet/in.h>

namespace qm {

class TcpPeer : public ON_command {
  public:
    TcpPeer() = default;
    TcpPeer(const TcpPeer&) = delete;
    TcpPeer& operator=(const TcpPeer&) = delete;
    ~TcpPeer() override { Close(); }

    // Connects within iTimeout seconds, then rests 5 ms; 0 or -1.
    int Connect(const char* ip, Ouint16 port, int iTimeout);
    // Waits at most 3 s for the peer to take all bytes.
    int Send(const Ouint8* data, int len) override;
    // One read must bring the whole frame: an answer that does not end with 0x5A is refused.
    int Recv(Ouint8* buff, int& dataLen, int iTimeout) override;
    // Shuts down, closes and rests 10 ms.
    void Close();

  private:
    int start_connect(const char* ip, Ouint16 port);
    int finish_connect(int iTimeout);

    int cannot_connect(int error, int seconds);
    int refuse_answer(Bytes answer, bool full);

    Descriptor m_Socket;
    sockaddr_in m_To{};
};

} // namespace qm
