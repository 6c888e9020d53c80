// UDP broadcast on every IPv4 interface of the host.
#pragma once

#include "cmdPacket/command.h"
#include "support/Descriptor.h"

#include <mutex>
#include <optional>
#include <string>

namespace qm {

class BroadcastPeer : public ON_command {
  public:
    // Waits for the process's other broadcasts to end.
    BroadcastPeer();
    BroadcastPeer(const BroadcastPeer&) = delete;
    BroadcastPeer& operator=(const BroadcastPeer&) = delete;
    ~BroadcastPeer() override { Close(); }

    // Opens one socket for each local address, all bound to localPort; 0, or -1 when a socket cannot be had.
    int InitUdp(const char* address, Ouint16 remotePort, Ouint16 localPort);
    // Sends by every interface; what an interface refuses is ignored. Always 0.
    int Send(const Ouint8* data, int len) override;
    // Waits up to the given number of times 1 s for one datagram, from whichever socket has one first.
    // Silence is an empty frame; -1 for a datagram that is too short for a frame and says neither "OK" nor
    // "ok".
    int Recv(Ouint8* buff, int& dataLen, int attempts) override;
    // Address of the sender of the latest answer; empty when nobody answered. Always 0.
    int get_ipAdder(Ouint8 out[20]) const;
    [[nodiscard]] bool answered() const { return remoteIP[0] != 0; }
    void Close();

    // Lists the host's IPv4 addresses and their interfaces; 0.
    int GetIpList();

  private:
    int open_socket(unsigned interface);
    void discard_pending();
    std::optional<int> receive_from(int socket, Ouint8* buff, int& dataLen);

    // All broadcasts of a process bind the same port, so that one would take the other's answers.
    std::unique_lock<std::mutex> m_turn;
    char remoteIP[20] = {};
    std::string BroadIp;
    Ouint16 BroadPort = 0;
    Ouint16 LocalPort = 0;
    std::vector<Descriptor> SocketList;
    std::vector<std::string> vecIp;  // local addresses, loopback excluded
    std::vector<std::string> vecNet; // the interface of each; two may have the same address
};

} // namespace qm
