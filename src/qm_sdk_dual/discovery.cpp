// Finding controllers and asking who they are.
#include "qm_sdk_dual/exports.h"

using namespace qm;

int cmd_tcpPing(const char* ip, Ouint16 port, Ping_data* retData) noexcept {
    if (!ip || !retData) return QM_FAILED;
    return guarded([&] { return tcp_ping(ip, port, *retData); });
}
