// What dynamic areas of both generations share: how they are sent, and deletion.
#pragma once

#include "cmdPacket/catalogue.h"
#include "support/bytes.h"

#include <functional>

namespace qm {

// Where a controller is, and what its screen is.
struct ControllerAddress {
    const char* ip;
    Ouint16 port;
    Ouint32 color;
};

// The type that the calling thread knows of its controller, which is not pinged then; 0: none. Gives the
// former.
Ouint16 assume_controller_type(Ouint16 controllerType) noexcept;

// Pings the controller for its type, and sends it the payload that build makes for its screen; an empty one
// is not sent: -1. The result of the exchange, or of what failed before it. The renderer is locked while
// build runs, since its settings are the controller's until all pages are made, and never on the network.
int send_built(const ControllerAddress& to, const std::function<CData()>& build);

// What append writes, as a buffer of its own; in one piece when its size is known.
template <class Append> CData serialised(const Append& append, std::size_t size = 0) {
    ByteBuffer bytes;
    bytes.reserve(size);
    ByteWriter out(bytes);
    append(out);
    return CData(std::move(bytes));
}

// Heads every dynamic-area, deletion and sound payload.
struct CVemarProtocol_DynamicAreaCmdHeader {
    Ouint8 RtnReq = 1;
    Ouint8 CmdGroup = hv_GPR_5HDynamicArea;
    Ouint8 Cmd = 0; // 0: add or update areas, 1: delete them, 2: update sounds, 7: insert a sound
    Ouint16 Reserved = 0;

    static constexpr Ouint32 GetSize() { return 5; }
    void append(ByteWriter& out) const { out.u8(RtnReq).u8(CmdGroup).u8(Cmd).u16(Reserved); }
    [[nodiscard]] CData GetData() const {
        return serialised([this](ByteWriter& out) { append(out); });
    }
};

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
