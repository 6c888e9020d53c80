// Puts dynamic areas together and on a generation-6 controller.
#pragma once

#include "DynamicArea/DynamicArea.h"
#include "DynamicArea/DynamicArea_6G_records.h"
#include "program/PicturesArea_g6.h"
#include "support/reason.h"

#include <optional>

namespace qm {

// The programs that an area is shown with, as the exports take them.
struct RelatedPrograms {
    Ouint16 count;
    const Ouint16* serials;

    // Numbers that are promised but not there.
    [[nodiscard]] bool missing() const { return !given({{"RelateProSerial", serials, count != 0}}); }
    [[nodiscard]] std::span<const Ouint16> list() const { return {serials, count}; }
};

// One area as the exports describe it. What is pointed to is the caller's.
struct AreaRequest {
    Ouint8 id;
    qm_G5_area_header header;
    qm_G6_page_header page;
    qm_G5_G6_fontData font;
    const char* fontName; // null: the content is a picture
    const char* content;  // a text, or the path of a picture
    std::optional<HVSound_6G> sound{};
    std::optional<RelatedPrograms> programs{};
};

// The whole add/update command.
class CDynamicArea_ALL_6G {
  public:
    CVemarProtocol_DynamicAreaCmdHeader m_oCmdHeader;
    std::vector<CVemarProtocol_DynamicArea_6G> m_vctDynamicArea;

    // Adds an area without pages; -1, after a message, when its number is taken. One with a list of programs
    // is shown with these only, with an empty list with all, and never interrupts what is being played.
    Oint32 AddArea(const AreaRequest& area);
    // Adds pages to the area, or to the last area of the list when none has the number; -1, after a message,
    // when there is none at all.
    Oint32 AddPages(Ouint8 areaId, std::vector<Page>&& pages);

    // The payload: command header, AreaNum (u16), the description of every area, the pixel data of every
    // area.
    [[nodiscard]] CData GetDynamicAreaData();
};

class CBuild_DynamicArea_6G : public CDynamicAreaOperator {
  public:
    // Renders the areas and sends them in one command. The result of the exchange, or of what failed before
    // it.
    static int UpdateOrAdd(const ControllerAddress& to, std::span<const AreaRequest> areas);

    // Speech without an area. A text that its size field cannot hold is refused with -1.
    static int dynamicArea_InsertSoundIndepend(const char* pIP, Ouint16 nPort, const HVSoundDepend_6G& sound,
                                               Ouint8 VoiceFlg, Ouint8 StoreFlag);
    static int dynamicArea_UpdateSoundIndepend(const char* pIP, Ouint16 nPort,
                                               std::span<const HVSoundDepend_6G> sounds, Ouint8 StoreFlag);
};

} // namespace qm
