#include "DynamicArea/DynamicArea.h"

#include "support/message.h"
#include "tcpClient/HV_Client.h"

#include <cctype>
#include <string>

namespace qm {
namespace {

constexpr std::size_t kLongestShortPayload = 32768;

} // namespace

bool is_font_file(const char* fontName) {
    std::string lower(fontName);
    for (char& c : lower) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return lower.find(".ttf") != lower.npos || lower.find(".ttc") != lower.npos;
}

int ping_for_type(const char* ip, Ouint16 port, Ouint16& controllerType) {
    Ping_data retdata{};
    int ret = tcp_ping(ip, port, retdata);
    if (ret == QM_OK && retdata.ControllerType == 0) ret = QM_FAILED; // acknowledged, but nothing said
    if (ret != QM_OK) {
        say("cmd_tcpPing run error...\n");
        return ret;
    }
    controllerType = retdata.ControllerType;
    say("retdata.ControllerType == 0x%x \n", controllerType);
    say("ret =====cmd_tcpPing===== %d \n", ret);
    return QM_OK;
}

int send_dynamic_payload(const char* ip, Ouint16 port, Ouint16 controllerType, Bytes payload) {
    HV_Client client;
    const int connected = client.init(ip, port);
    // In GB2312: "after".
    say("HV_Client init\xBA\xF3\xA3\xAC"
        "Client.m_DeviceType == 0x%x \n",
        client.m_DeviceType);
    if (connected != QM_OK) return connected;
    if (client.m_DeviceType != controllerType) {
        say("oClient.m_DeviceType != retdata.ControllerType \n");
        client.m_DeviceType = controllerType;
    }
    // No room for an answer's payload: a plain acknowledgement is the good answer.
    Answer answer;
    if (payload.size() > kLongestShortPayload)
        return client.send_recv_cmd_1K2(hv_GPR_5HDynamicArea, 0, payload, answer);
    return client.send_recv_cmd_1K(hv_GPR_5HDynamicArea, 0, payload, answer);
}

} // namespace qm
