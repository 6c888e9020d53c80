// Puts dynamic areas together and on a generation-6 controller.
#pragma once

#include "DynamicArea/DynamicArea_6G_records.h"
#include "program/PicturesArea_g6.h"

#include <memory>

namespace qm {

// The whole add/update command.
class CDynamicArea_ALL_6G {
  public:
    CVemarProtocol_DynamicAreaCmdHeader m_oCmdHeader;
    std::vector<std::unique_ptr<CVemarProtocol_DynamicArea_6G>> m_vctDynamicArea;

    void Clear() { m_vctDynamicArea.clear(); }

    // Adds an area; -1, after a message, when its number is taken.
    Oint32 AddArea(Ouint8 areaId, const qm_G5_area_header& header, bool frameFlag, bool soundFlag,
                   Ouint8 transparency, Ouint8 areaEqual);
    // The same with the speech of sound, when its SoundFlag is 1.
    Oint32 AddArea(Ouint8 areaId, const qm_G5_area_header& header, bool frameFlag, Ouint8 transparency,
                   Ouint8 areaEqual, const HVSound_6G& sound);

    // Adds a page to the area, or to the last area of the list when none has the number; -1, after a message,
    // when there is none at all.
    Oint32 AddPage(Ouint8 areaId, const qm_G6_page_header& page, Bytes data);
    Oint32 AddPages(Ouint8 areaId, const qm_G6_page_header& page, std::span<const CData> pages);

    // The payload: command header, AreaNum (u16), the description of every area, the pixel data of every
    // area.
    [[nodiscard]] CData GetDynamicAreaData();

  private:
    [[nodiscard]] CVemarProtocol_DynamicArea_6G* find(Ouint8 areaId);
};

// Where a controller is, and what its screen is.
struct ControllerAddress {
    const char* ip;
    Ouint16 port;
    Ouint32 color;
};

// One area as the exports describe it.
struct AreaRequest {
    Ouint8 id;
    qm_G5_area_header header;
    qm_G6_page_header page;
    const HVSound_6G* sound; // null: none
};

class CBuild_DynamicArea_6G {
  public:
    // Renders the text or the picture, and sends it. The result of the exchange, or of what failed before it.
    int UpdateOrAdd_AreaWithTxt(const ControllerAddress& to, const AreaRequest& area,
                                const qm_G5_G6_fontData& fontData, const char* fontName, const char* text);
    int UpdateOrAdd_AreaWithPic(const ControllerAddress& to, const AreaRequest& area, const char* picPath);

  private:
    template <class AddContent>
    int update(const ControllerAddress& to, const AreaRequest& area, AddContent&& add);
    CData BuildDynamicAreaData(const AreaRequest& area, std::span<const CData> pages);

    CDynamicArea_ALL_6G m_oDynamicAll;
};

} // namespace qm
