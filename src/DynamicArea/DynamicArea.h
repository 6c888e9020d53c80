// What dynamic areas of both generations share: the ping before and the exchange behind the rendering, and
// deletion.
#pragma once

#include "support/bytes.h"

namespace qm {

// Where a controller is, and what its screen is.
struct ControllerAddress {
    const char* ip;
    Ouint16 port;
    Ouint32 color;
};

// Pings the controller for its type; the ping's result, with the message when it failed.
int ping_for_type(const char* ip, Ouint16 port, Ouint16& controllerType);

// Connects, and sends the payload to a controller of that type; the result of the exchange.
int send_dynamic_payload(const char* ip, Ouint16 port, Ouint16 controllerType, Bytes payload);

// The command that deletes areas.
struct CVemarProtocol_DelDynamicArea {
    static constexpr Ouint8 kDelete = 1;
    static constexpr Oint8 kAll = -1;

    Oint8 DeleteAreaNum = 0; // ids that follow; kAll: every area there is
    std::vector<Ouint8> vctDeleteAreaId;

    [[nodiscard]] Ouint32 GetSize() const;
    [[nodiscard]] CData GetData() const;
};

// Deletes areas of either generation.
class CDynamicAreaOperator {
  public:
    // -1 deletes all areas; a number above 64 is refused, before anything is sent.
    static int dynamicArea_DelArea(const char* pIP, Ouint16 nPort, Oint8 uAreaId);
    // A negative count has no ids; -1 deletes all areas.
    static int dynamicArea_DelAreas(const char* pIP, Ouint16 nPort, Oint8 uAreaCount, const Oint8* pAreaID);

  private:
    static int SendDelAreaInfo(const char* pIP, Ouint16 nPort, Bytes payload);
};

} // namespace qm
