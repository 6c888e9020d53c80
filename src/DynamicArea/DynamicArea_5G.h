// Puts a dynamic area together and on a generation-5 controller.
#pragma once

#include "DynamicArea/DynamicArea.h"
#include "DynamicArea/DynamicArea_6G_records.h"
#include "program/PicturesArea.h"

#include <variant>

namespace qm {

// One page; its pixels follow. 17 bytes.
struct CVemarProtocl_PageDataFormat {
    Ouint32 PageDataLen = 0; // the properties and the pixels
    Ouint8 PageStyle = 0, DisplayMode = 1, ClearMode = 1, Speed = 1;
    Ouint16 StayTime = 300;
    Ouint8 RepeatTime = 1;
    Ouint16 ValidLen = 64;

    static constexpr Ouint32 GetSize() { return 17; }
    static constexpr Ouint32 GetSize_PagePropertySize() { return 13; }
    void append(ByteWriter& out) const;
};

// The whole command, which carries one area. Borders are never sent.
class CVemarProtocol_DynamicArea_5G {
  public:
    // A position in the payload is a 16-bit quantity.
    static constexpr Ouint32 kLongest = 0xFFFF;

    CVemarProtocol_DynamicAreaCmdHeader m_oCmdHeader;
    Ouint32 AreaDataLen = 24;
    Ouint8 AreaId = 0;
    Ouint8 RunMode = 0;
    Ouint16 Timeout = 5;
    Ouint8 RelateAllPro = 1;
    Ouint16 RelateProNum = 0;
    std::vector<Ouint16> vctRelateProSerial;
    Ouint8 ImmePlay = 0;
    Ouint8 AreaType = 0x10;
    Ouint16 AreaX = 0, AreaY = 0, AreaWidth = 64, AreaHeight = 32;
    Ouint8 AreaFFlag = 0;
    std::vector<CVemarProtocl_PageDataFormat> vctPageStyle;
    std::vector<CData> vctPicPageData;

    // Sets AreaDataLen, pixel data included; and clears the border flag.
    void CalculateAreaDataLen();
    [[nodiscard]] Ouint32 GetSize();
    // Empty when a payload of that size cannot be sent.
    [[nodiscard]] CData GetData();

  private:
    [[nodiscard]] bool names_programs() const { return RelateAllPro == 0 && RelateProNum != 0; }
};

// How the pages of one content item are shown.
struct PageEffect_5G {
    Ouint8 DisplayMode, ClearMode, Speed;
    Ouint16 StayTime;
    Ouint8 RepeatTime;
};

// The pages of one content item, and the valid length of its last page.
struct ST_PageDataA_ValieLen {
    std::vector<CData> vctPicData;
    Ouint16 nValidLen = 0;
};

// One area as the exports describe it. What is pointed to is the caller's.
struct AreaRequest_5G {
    Ouint8 uAreaId, RunMode;
    Ouint16 Timeout;
    Ouint8 RelateAllPro;
    Ouint16 RelateProNum;
    const Ouint16* RelateProSerial;
    Ouint8 ImmePlay;
    Ouint16 uAreaX, uAreaY, uWidth, uHeight;
    Ouint8 AreaFFlag;
};

struct TextContent_5G {
    qm_G5_G6_fontData font;
    const char *fontName, *text;
};

// A text, or the path of a picture, or nothing to show.
struct ContentItem_5G {
    PageEffect_5G effect;
    std::variant<std::monostate, TextContent_5G, const char*> content;
};

class CBuild_DynamicArea_5H : public CDynamicAreaOperator {
  public:
    // Each renders the content and sends the area. The result of the exchange, or of what failed before it.
    static int UpdateOrAdd(const ControllerAddress& to, const AreaRequest_5G& area,
                           const ContentItem_5G& item);
    static int dynamicArea_AddAreaInfos_5G(const ControllerAddress& to, const AreaRequest_5G& area,
                                           std::span<const ContentItem_5G> items);

    // The payload; empty when program numbers are missing, or when it is too long. In display mode 38 the
    // pages, in reading order, go last page first; the one that goes last is cut to its valid length.
    static CData BuildDynamicAreaData(const AreaRequest_5G& area, const PageEffect_5G& effect,
                                      const ST_PageDataA_ValieLen& pages);
    // The same with the pages of several items, as they are listed.
    static CData BuildDynamicAreaData(const AreaRequest_5G& area, std::span<const ContentItem_5G> items,
                                      std::span<const ST_PageDataA_ValieLen> pages);
};

} // namespace qm
