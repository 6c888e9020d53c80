#include "tcpClient/HV_Client.h"

namespace qm {

int HV_Client::init(const char* ip, Ouint16 port) {
    if (const int code = Connect(ip, port, kTimeout); code != 0) return code;
    return ping_handshake(kTimeout);
}

} // namespace qm
