// The request/answer engine under every command. A transport derives from it and supplies Send and Recv.
#pragma once

#include "cmdPacket/LedHVPacket.h"

namespace qm {

// Data bytes in one block of a file write, for the whole process.
[[nodiscard]] Ouint16 packet_len();
void set_packet_len(Ouint16 len);

class ON_command : public LedHVPacket {
  public:
    // Sends len bytes; 0 or -1.
    virtual int Send(const Ouint8* data, int len);
    // Receives one whole frame. dataLen: in the capacity of buff, out the bytes received; 0 or -1.
    virtual int Recv(Ouint8* buff, int& dataLen, int iTimeout);

    // One command, one answer. The status codes are those of Unpack, -1 from the transport included.
    int send_recv_cmd(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data, Answer& recv_data);
    // The same with the answer's payload discarded.
    int send_cmd(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data);

    // Payload inside one envelope, sent in pieces of 1,024 bytes: up to 32,768 bytes, and longer ones.
    int send_recv_cmd_1K(Ouint8 cmd_group, Ouint8 cmd, Bytes data, Answer& recv_data);
    int send_recv_cmd_1K2(Ouint8 cmd_group, Ouint8 cmd, Bytes data, Answer& recv_data);

    // A complete stuffed frame as the payload of an envelope, which is stuffed once more.
    int send_recv_cmd_6HnX(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data, Answer& recv_data);
    int send_recv_5H_DynamicArea(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data, Answer& recv_data);

    // Raw text to a Wi-Fi module: 0 when the answer contains "OK" or "ok".
    int send_AT_cmd(const char* cmdData, Ouint16 dataLen);
    // The same with the answer handed out. dataLen: in the bytes to send, out the bytes received; packet
    // holds 512 bytes, of which at most 511 are used.
    int send_AT_cmdRetData(const char* cmdData, Ouint16& dataLen, Ouint8* packet);

    // Commands; each is one exchange and returns its status.
    int hv_cmd_ping(Answer& retData);

    Ouint8 _percentage = 0;

  protected:
    static constexpr int kTimeout = 3; // seconds, of every receive

    // Builds the handshake's ping, sends it and learns the controller type from the answer.
    int ping_handshake(int recvTimeout);
    // Receives into the object's own buffer.
    int receive_frame(int capacity, int timeout, Bytes& frame);

    Frame m_frame; // the request at hand, kept from command to command

  private:
    int receive_answer(int sent, Ouint8 group, Ouint8 cmd, Answer& recv_data);

    Frame m_received;
};

} // namespace qm
