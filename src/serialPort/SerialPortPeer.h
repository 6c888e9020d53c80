// A serial line to a controller: a placeholder that opens nothing and receives nothing.
#pragma once

#include "cmdPacket/command.h"

namespace qm {

class SerialPortPeer : public ON_command {
  public:
    int InitSerialPort(const char* portName, Ouint8 baudRate);
    int Open(const char* portName);
    int SetCom(Ouint8 baudRate);
    void SetTimeout(Ouint16 timeout) { m_dwTimeout = timeout; }
    int Send(const Ouint8* data, int len) override;
    int Recv(Ouint8* buff, int& dataLen, int iTimeout) override;
    void Close() {}
    static int not_implemented(); // -1

  private:
    Ouint16 m_dwTimeout = 1000;
};

// The same with the handshake of every controller connection.
class HV_serialPort : public SerialPortPeer {
  public:
    // 0, or -1 for any failure before the handshake's answer is opened.
    int init(const char* portName, Ouint8 baudRate);
};

} // namespace qm
