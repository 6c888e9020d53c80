#include "DynamicArea/DynamicArea.h"

#include "program/pixels/ScreenSettings.h"
#include "support/message.h"
#include "support/reason.h"
#include "tcpClient/HV_Client.h"

#include <utility>

namespace qm {
namespace {

constexpr std::size_t kLongestShortPayload = 32768;

enum class Purpose { update, deletion };

thread_local Ouint16 t_assumed = 0;

// Pings, and says so.
int ping(const char* ip, Ouint16 port, Ouint16& controllerType, Purpose purpose) {
    controllerType = t_assumed;
    if (controllerType != 0) return QM_OK;
    Ping_data retdata{};
    const int ret = tcp_ping(ip, port, retdata);
    if (ret != QM_OK) {
        if (purpose == Purpose::update)
            say("cmd_tcpPing run error...\n");
        else
            say("ret failed!!!!!!!!! =====cmd_tcpPing===== %d \n", ret);
        return ret;
    }
    controllerType = retdata.ControllerType;
    say("retdata.ControllerType == 0x%x \n", controllerType);
    say("ret =====cmd_tcpPing===== %d \n", ret);
    return QM_OK;
}

// Connects as a client of that type.
int open_as(HV_Client& client, const char* ip, Ouint16 port, Ouint16 controllerType) {
    const int connected = client.init(ip, port);
    // In GB2312: "after".
    say("HV_Client init\xBA\xF3\xA3\xAC"
        "Client.m_DeviceType == 0x%x \n",
        client.m_DeviceType);
    if (client.m_DeviceType != controllerType) {
        say("oClient.m_DeviceType != retdata.ControllerType \n");
        client.m_DeviceType = controllerType;
    }
    return connected;
}

// Connects, and sends the payload to a controller of that type.
int send_payload(const char* ip, Ouint16 port, Ouint16 controllerType, Bytes payload) {
    HV_Client client;
    if (const int code = open_as(client, ip, port, controllerType); code != QM_OK) return code;
    // No room for an answer's payload: a plain acknowledgement is the good answer.
    Answer answer;
    if (payload.size() > kLongestShortPayload)
        return client.send_recv_cmd_1K2(hv_GPR_5HDynamicArea, 0, payload, answer);
    return client.send_recv_cmd_1K(hv_GPR_5HDynamicArea, 0, payload, answer);
}

} // namespace

Ouint16 assume_controller_type(Ouint16 controllerType) noexcept {
    return std::exchange(t_assumed, controllerType);
}

int send_built(const ControllerAddress& to, const std::function<CData()>& build) {
    Ouint16 controllerType = 0;
    if (const int code = ping(to.ip, to.port, controllerType, Purpose::update); code != QM_OK) return code;
    CData payload;
    {
        const auto lock = lock_renderer();
        screen_settings().set(to.color, controllerType, DOUBLE_COLOR_PIXTYPE_1);
        payload = build();
    }
    if (payload.m_nDataLen == 0) return QM_FAILED;
    return send_payload(to.ip, to.port, controllerType, payload.bytes());
}

Ouint32 CVemarProtocol_DelDynamicArea::GetSize() const {
    const bool listed =
        DeleteAreaNum > 0 && static_cast<std::size_t>(DeleteAreaNum) == vctDeleteAreaId.size();
    return CVemarProtocol_DynamicAreaCmdHeader::GetSize() + 1 +
           (listed ? static_cast<Ouint32>(vctDeleteAreaId.size()) : 0);
}

CData CVemarProtocol_DelDynamicArea::GetData() const {
    return serialised([this](ByteWriter& out) {
        CVemarProtocol_DynamicAreaCmdHeader{.Cmd = kDelete}.append(out);
        out.u8(static_cast<Ouint8>(DeleteAreaNum)).bytes(vctDeleteAreaId);
    });
}

int CDynamicAreaOperator::dynamicArea_DelArea(const char* pIP, Ouint16 nPort, Oint8 uAreaId) {
    constexpr Oint8 kHighestId = 64;
    if (uAreaId > kHighestId)
        return fail(QM_FAILED, "Argument uAreaId is %d, and may be 0 to %d, or -1 (255) for all areas.",
                    uAreaId, kHighestId);
    const bool all = uAreaId == CVemarProtocol_DelDynamicArea::kAll;
    return dynamicArea_DelAreas(pIP, nPort, all ? CVemarProtocol_DelDynamicArea::kAll : Oint8{1}, &uAreaId);
}

int CDynamicAreaOperator::dynamicArea_DelAreas(const char* pIP, Ouint16 nPort, Oint8 uAreaCount,
                                               const Oint8* pAreaID) {
    CVemarProtocol_DelDynamicArea areas;
    areas.DeleteAreaNum = uAreaCount;
    for (int i = 0; i < uAreaCount; ++i) areas.vctDeleteAreaId.push_back(static_cast<Ouint8>(pAreaID[i]));
    return SendDelAreaInfo(pIP, nPort, areas.GetData().bytes());
}

int CDynamicAreaOperator::SendDelAreaInfo(const char* pIP, Ouint16 nPort, Bytes payload) {
    Ouint16 controllerType = 0;
    const int code = ping(pIP, nPort, controllerType, Purpose::deletion);
    return code == QM_OK ? send_payload(pIP, nPort, controllerType, payload) : code;
}

} // namespace qm
