// Identity and network settings.
#include "cmdPacket/command.h"

namespace qm {

int ON_command::hv_cmd_ping(Answer& retData) { return send_recv_cmd(hv_GRP_CONF, hv_conf_Ping, {}, retData); }

int ON_command::hv_cmd_networkSearch(Answer& retData) {
    return send_recv_cmd(hv_GRP_Network, hv_net_NetworkSearch, {}, retData);
}

int ON_command::hv_cmd_networkSearch_6G(Answer& retData) {
    return send_recv_cmd(hv_GRP_Network, hv_net_NetworkSearch_6G, {}, retData);
}

int ON_command::hv_cmd_setMac(const char* mac) {
    Ouint8 bytes[6];
    strMacToHex(mac, bytes);
    return send_cmd(hv_GRP_Network, hv_net_SetEthernetMac, bytes);
}

// 51 bytes: mode, ip 4, subnetMask 4, gateway 4, port u16, serverMode, serverIP 4, serverPort u16, password
// 8, heartbeat u16, netID 12, onoffMac and mac 6, which stay zero.
int ON_command::hv_cmd_setIP(const S_setIP& settings) {
    ByteBuffer payload;
    ByteWriter out(payload);
    const auto address = [&out](const char* text) {
        Ouint8 bytes[4];
        strIPtoHex(text, bytes);
        out.bytes(bytes);
    };
    out.u8(settings.mode);
    address(settings.ip);
    address(settings.subnetMask);
    address(settings.gateway);
    out.u16(static_cast<Ouint16>(settings.port)).u8(settings.serverMode);
    address(settings.serverIP);
    out.u16(static_cast<Ouint16>(settings.serverPort)).text(settings.password, 8);
    out.u16(static_cast<Ouint16>(settings.heartbeat)).text(settings.netID, 12).zeros(7);
    return send_cmd(hv_GRP_Network, hv_net_SetEthernetIP, payload);
}

} // namespace qm
