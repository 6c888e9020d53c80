#include "cmdPacket/command.h"

#include "support/message.h"
#include "support/reason.h"

#include <atomic>
#include <string_view>

namespace qm {
namespace {

std::atomic<Ouint16> g_packetLen = 1024;

constexpr std::size_t kPiece = 1024;

int size_of(Bytes bytes) { return static_cast<int>(bytes.size()); }

} // namespace

Ouint16 packet_len() { return g_packetLen; }
void set_packet_len(Ouint16 len) { g_packetLen = len; }

bool says_ok(Bytes answer) {
    const std::string_view text(reinterpret_cast<const char*>(answer.data()), answer.size());
    return text.find("OK") != text.npos || text.find("ok") != text.npos;
}

int ON_command::Send(const Ouint8*, int) { return QM_FAILED; }
int ON_command::Recv(Ouint8*, int&, int) { return QM_FAILED; }

int ON_command::receive_frame(int timeout, Bytes& frame, int capacity) {
    m_received.resize(kWholeFrame);
    int length = capacity;
    if (const int code = Recv(m_received.data(), length, timeout); code != 0) return code;
    frame = Bytes(m_received).first(static_cast<std::size_t>(length));
    return QM_OK;
}

int ON_command::send_recv_cmd(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data, Answer& recv_data) {
    const Bytes request = Pack(cmd_group, cmd, cmd_data);
    if (request.empty()) return QM_FAILED;
    if (const int code = Send(request.data(), size_of(request)); code != 0) return code;
    Bytes frame;
    if (const int code = receive_frame(kTimeout, frame); code != 0) return code;
    return Unpack(frame, cmd_group, cmd, recv_data);
}

int ON_command::send_cmd(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data) {
    Ouint8 discarded[1024];
    Answer answer{discarded};
    return send_recv_cmd(cmd_group, cmd, cmd_data, answer);
}

// The answer to an enveloped request; sent is the byte count that the messages name.
int ON_command::receive_answer(int sent, Ouint8 group, Ouint8 cmd, Answer& recv_data) {
    Bytes frame;
    if (const int code = receive_frame(kTimeout, frame, kPiece); code != 0) {
        say("Recv failed. nTotalLen ======= %d \n", sent);
        return code;
    }
    const int code = Unpack(frame, group, cmd, recv_data);
    if (code != 0) say("Unpack failed. nTotalLen ======= %d \n", sent);
    return code;
}

int ON_command::send_recv_cmd_1K(Ouint8 cmd_group, Ouint8 cmd, Bytes data, Answer& recv_data) {
    const Bytes request = Pack6HnX_DynamicArea(cmd_group, cmd, data);
    int sent = 0;
    while (sent < size_of(request)) {
        const int piece = std::min(static_cast<int>(kPiece), size_of(request) - sent);
        if (const int code = Send(request.data() + sent, piece); code != 0) {
            say("Send failed!!!!!!!!!!!!!!!!!!!!!!!!!!!!!! have sent bytes = nTotalLen = %d !\n", sent);
            return code;
        }
        sent += piece;
    }
    return receive_answer(sent, cmd_group, cmd, recv_data);
}

int ON_command::send_recv_cmd_1K2(Ouint8 cmd_group, Ouint8 cmd, Bytes data, Answer& recv_data) {
    const CData frame = Pack6HnX_DynamicArea2(cmd_group, cmd, data);
    if (frame.is_error()) return QM_FAILED;
    const int whole = static_cast<int>(frame.m_nDataLen / kPiece);
    const int remainder = static_cast<int>(frame.m_nDataLen % kPiece);
    const Ouint8* next = frame.m_pData.data();
    for (int i = 0; i < whole; ++i, next += kPiece) {
        if (Send(next, kPiece) != 0) {
            say("Send failed!!!!!!!!!!!!!!!!!!!!!!!!!!!!!! have sent bytes = %d !\n",
                i * static_cast<int>(kPiece));
            return QM_FAILED;
        }
    }
    if (remainder != 0 && Send(next, remainder) != 0) {
        say("Send failed, at nRemainder !!!!!!!!!!!!!!!!!!!!!!!!!!!!! will sent bytes = %d !\n", remainder);
        return QM_FAILED;
    }
    return receive_answer(0, cmd_group, cmd, recv_data);
}

int ON_command::send_recv_cmd_6HnX(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data, Answer& recv_data) {
    const Bytes inner = Pack(cmd_group, cmd, cmd_data);
    if (inner.empty()) return QM_FAILED;
    return send_recv_cmd_1K(cmd_group, cmd, inner, recv_data);
}

int ON_command::send_recv_5H_DynamicArea(Ouint8 cmd_group, Ouint8 cmd, Bytes cmd_data, Answer& recv_data) {
    return send_recv_cmd_1K(cmd_group, cmd, Pack5H_DynamicArea(cmd_group, cmd, cmd_data), recv_data);
}

int ON_command::send_AT_cmd(const char* cmdData, Ouint16 dataLen) {
    if (Send(reinterpret_cast<const Ouint8*>(cmdData), dataLen) != 0) return QM_FAILED;
    Bytes received;
    if (receive_frame(kTimeout, received) != 0) return QM_FAILED;
    if (says_ok(received)) return QM_OK;
    return received.empty() ? refuse(received) : fail(QM_FAILED, "The Wi-Fi module did not answer OK.");
}

int ON_command::send_AT_cmdRetData(const char* cmdData, Ouint16& dataLen, Ouint8* packet) {
    constexpr int kOverflow = 512;
    if (Send(reinterpret_cast<const Ouint8*>(cmdData), dataLen) != 0) return QM_FAILED;
    int length = kOverflow;
    if (Recv(packet, length, kTimeout) != 0) return QM_FAILED;
    if (length == 0) return refuse({});
    if (length == kOverflow)
        return fail(QM_FAILED, "The Wi-Fi module's answer is longer than %d bytes.", kOverflow - 1);
    dataLen = static_cast<Ouint16>(length);
    return QM_OK;
}

int ON_command::ping_handshake(int recvTimeout) {
    const Bytes request = PackPing3();
    if (const int code = Send(request.data(), size_of(request)); code != 0) return code;
    Bytes frame;
    if (const int code = receive_frame(recvTimeout, frame); code != 0) return code;
    ByteBuffer body;
    if (const int code = UnpackPing3(frame, body); code != 0) return code;
    m_DeviceType = static_cast<Ouint16>(body[6] | body[7] << 8);
    return QM_OK;
}

} // namespace qm
