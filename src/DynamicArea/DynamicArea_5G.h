// Puts a dynamic area together and on a generation-5 controller.
#pragma once

#include "DynamicArea/DynamicArea.h"
#include "program/PicturesArea.h"

#include <variant>

namespace qm {

// One area as the exports describe it. What is pointed to is the caller's.
struct AreaRequest_5G {
    Ouint8 uAreaId, RunMode;
    Ouint16 Timeout;
    Ouint8 RelateAllPro;
    Ouint16 RelateProNum;
    const Ouint16* RelateProSerial;
    Ouint8 ImmePlay;
    Ouint16 uAreaX, uAreaY, uWidth, uHeight;
};

struct TextContent_5G {
    qm_G5_G6_fontData font;
    const char *fontName, *text;
};

// A text, or the path of a picture, or nothing to show; and how its pages are shown.
struct ContentItem_5G {
    qm_G6_page_header page;
    std::variant<std::monostate, TextContent_5G, const char*> content;
};

// The pages of one content item, and the valid length of the one that goes last.
struct ST_PageDataA_ValieLen {
    std::vector<Page> vctPicData;
    Ouint16 nValidLen = 0;
};

class CBuild_DynamicArea_5H : public CDynamicAreaOperator {
  public:
    // Each renders the content and sends the area. The result of the exchange, or of what failed before it.
    static int UpdateOrAdd(const ControllerAddress& to, const AreaRequest_5G& area,
                           const ContentItem_5G& item);
    static int dynamicArea_AddAreaInfos_5G(const ControllerAddress& to, const AreaRequest_5G& area,
                                           std::span<const ContentItem_5G> items);

    // The payload, which carries one area and never a border. It is empty when program numbers are missing,
    // or when it is too long. The pages of an item go as they are listed, or the other way round when that is
    // the order of reading; the one that goes last is cut to its valid length.
    static CData BuildDynamicAreaData(const AreaRequest_5G& area,
                                      std::span<const ST_PageDataA_ValieLen> items, PageOrder order);
};

} // namespace qm
