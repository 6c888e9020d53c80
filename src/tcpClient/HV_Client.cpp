#include "tcpClient/HV_Client.h"

namespace qm {

int HV_Client::init(const char* ip, Ouint16 port) {
    if (const int code = Connect(ip, port, kTimeout); code != 0) return code;
    return ping_handshake(kTimeout);
}

int tcp_ping(const char* ip, Ouint16 port, Ping_data& retData) {
    HV_Client client;
    if (const int code = client.init(ip, port); code != 0) return code;
    Ouint8 buffer[1024] = {};
    Answer answer{buffer};
    const int code = client.hv_cmd_ping(answer);
    if (code == QM_OK) std::memcpy(&retData, buffer, sizeof retData);
    return code;
}

} // namespace qm
