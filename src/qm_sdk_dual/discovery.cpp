// Finding controllers, asking who they are, and setting up their network.
#include "qm_sdk_dual/exports.h"

using namespace qm;

namespace {

int ping_into(ON_command& connection, Ping_data& record) {
    return into_record<1024>(record, [&](Answer& answer) { return connection.hv_cmd_ping(answer); });
}

// The answer may be as long as the record; a longer one is cut.
template <class Route, class Record> int search_6g(const Route& route, Record* record) {
    return run(route, {{"retData", record}}, [=](ON_command& connection) {
        return into_record<sizeof(Record)>(
            *record, [&](Answer& answer) { return connection.hv_cmd_networkSearch_6G(answer); });
    });
}

} // namespace

int cmd_tcpPing(const char* ip, Ouint16 port, Ping_data* retData) noexcept {
    return guarded({{"ip", ip}, {"retData", retData}}, [&] { return tcp_ping(ip, port, *retData); });
}

int cmd_udpPing(Ping_data* retData) noexcept {
    return run(Broadcast{}, {{"retData", retData}},
               [&](ON_command& broadcast) { return ping_into(broadcast, *retData); });
}

int cmd_udpNetworkSearch(heartbeatData* retData) noexcept {
    return run(Broadcast{}, {{"retData", retData}}, [&](ON_command& broadcast) {
        return into_record<64>(*retData,
                               [&](Answer& answer) { return broadcast.hv_cmd_networkSearch(answer); });
    });
}

int cmd_udpNetworkSearch_6G(NetSearchCmdRet* retData) noexcept { return search_6g(Broadcast{}, retData); }

int cmd_udpNetworkSearch_6G_Web(NetSearchCmdRet_Web* retData) noexcept {
    return search_6g(Broadcast{}, retData);
}

int cmd_tcpNetworkSearch_6G(const char* ip, Ouint16 port, NetSearchCmdRet* retData) noexcept {
    return search_6g(Tcp{ip, port}, retData);
}

int cmd_tcpNetworkSearch_6G_Web(const char* ip, Ouint16 port, NetSearchCmdRet_Web* retData) noexcept {
    return search_6g(Tcp{ip, port}, retData);
}

int cmd_uart_search_Net_6G(NetSearchCmdRet* retData, const char* uartPort, Ouint8 nBaudRateType) noexcept {
    return search_6g(Serial{uartPort, nBaudRateType}, retData);
}

int cmd_uart_search_Net_6G_Web(NetSearchCmdRet_Web* retData, const char* uartPort,
                               Ouint8 nBaudRateType) noexcept {
    return search_6g(Serial{uartPort, nBaudRateType}, retData);
}

int cmd_udpSetIP(Ouint8 mode, const char* ip, const char* subnetMask, const char* gateway, int16_t port,
                 Ouint8 serverMode, const char* serverIP, int16_t serverPort, const char* password,
                 int16_t heartbeat, const char* netID) noexcept {
    return run(Broadcast{},
               {{"ip", ip},
                {"subnetMask", subnetMask},
                {"gateway", gateway},
                {"serverIP", serverIP},
                {"password", password},
                {"netID", netID}},
               [&](ON_command& broadcast) {
                   return broadcast.hv_cmd_setIP({mode, ip, subnetMask, gateway, port, serverMode, serverIP,
                                                  serverPort, password, heartbeat, netID});
               });
}

int cmd_udpSetMac(const char* mac) noexcept {
    return run(Broadcast{}, {{"mac", mac}},
               [&](ON_command& broadcast) { return broadcast.hv_cmd_setMac(mac); });
}
