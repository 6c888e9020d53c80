// A connection to an HV-family controller: TCP and the handshake that learns the controller's type.
#pragma once

#include "tcpClient/TcpPeer.h"

namespace qm {

class HV_Client : public TcpPeer {
  public:
    // Connects and pings; 0, -1, or -4 for a handshake answer of an unknown version.
    int init(const char* ip, Ouint16 port);
};

// Asks the controller at ip:port who it is, on a connection of its own. retData is written on success only;
// what the answer did not reach is zero.
int tcp_ping(const char* ip, Ouint16 port, Ping_data& retData);

} // namespace qm
