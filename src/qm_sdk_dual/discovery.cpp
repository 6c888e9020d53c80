// Finding controllers and asking who they are.
#include "qm_sdk_dual/exports.h"

using namespace qm;

int cmd_tcpPing(const char* ip, Ouint16 port, Ping_data* retData) noexcept {
    if (!retData) return QM_FAILED;
    return with_client(ip, port, [&](HV_Client& client) {
        Ouint8 buffer[1024];
        Answer answer{buffer};
        const int code = client.hv_cmd_ping(answer);
        if (code == QM_OK)
            std::memcpy(retData, buffer, std::min(sizeof *retData, static_cast<std::size_t>(answer.length)));
        return code;
    });
}
