// Dynamic areas of generation 5, and what older callers still link to.
#include "DynamicArea/DynamicArea_5G.h"
#include "qm_sdk_dual/dynamic_exports.h"

using namespace qm;

namespace {

const char* text_of(const Ouint8* bytes) { return reinterpret_cast<const char*>(bytes); }

// An item of neither kind has no pages; one whose pointers are missing gives nothing.
std::optional<ContentItem_5G> item_of(const DynamicAreaBaseInfo_5G& info) {
    ContentItem_5G item{{0, info.DisplayMode, info.ClearMode, info.Speed, info.StayTime, info.RepeatTime},
                        {}};
    if (info.nType == 1) {
        if (!given({{"fontName", info.fontName}, {"strAreaTxtContent", info.strAreaTxtContent}}))
            return std::nullopt;
        const HVfontData font = info.oFont;
        item.content =
            TextContent_5G{font_data_of(font), text_of(info.fontName), text_of(info.strAreaTxtContent)};
    } else if (info.nType == 2) {
        if (!given({{"filePath", info.filePath}})) return std::nullopt;
        item.content = text_of(info.filePath);
    }
    return item;
}

bool can_be_sent(const char* ip, Ouint32 port, const AreaRequest_5G& area) {
    return valid_address(ip, port, kFirstPort5) && has_pixels("uWidth", area.uWidth, "uHeight", area.uHeight);
}

int update(const char* ip, Ouint32 port, E_ScreenColor_G56 color, const AreaRequest_5G& area,
           const ContentItem_5G& item) {
    if (!can_be_sent(ip, port, area)) return QM_FAILED;
    return CBuild_DynamicArea_5H::UpdateOrAdd(address_of(ip, port, color), area, item);
}

} // namespace

int dynamicArea_AddAreaWithTxt_5G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                                  Ouint8 RunMode, Ouint16 Timeout, Ouint8 RelateAllPro, Ouint16 RelateProNum,
                                  Ouint16* RelateProSerial, Ouint8 ImmePlay, Ouint16 uAreaX, Ouint16 uAreaY,
                                  Ouint16 uWidth, Ouint16 uHeight, HVareaframeHeader, Ouint8 DisplayMode,
                                  Ouint8 ClearMode, Ouint8 Speed, Ouint16 StayTime, Ouint8 RepeatTime,
                                  HVfontData oFont, const char* fontName,
                                  const char* strAreaTxtContent) noexcept {
    return guarded({{"fontName", fontName}, {"strAreaTxtContent", strAreaTxtContent}}, [&] {
        return update(pIP, nPort, color,
                      {uAreaId, RunMode, Timeout, RelateAllPro, RelateProNum, RelateProSerial, ImmePlay,
                       uAreaX, uAreaY, uWidth, uHeight},
                      {{0, DisplayMode, ClearMode, Speed, StayTime, RepeatTime},
                       TextContent_5G{font_data_of(oFont), fontName, strAreaTxtContent}});
    });
}

int dynamicArea_AddAreaWithPic_5G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                                  Ouint8 RunMode, Ouint16 Timeout, Ouint8 RelateAllPro, Ouint16 RelateProNum,
                                  Ouint16* RelateProSerial, Ouint8 ImmePlay, Ouint16 uAreaX, Ouint16 uAreaY,
                                  Ouint16 uWidth, Ouint16 uHeight, HVareaframeHeader, Ouint8 DisplayMode,
                                  Ouint8 ClearMode, Ouint8 Speed, Ouint16 StayTime, Ouint8 RepeatTime,
                                  const char* filePath) noexcept {
    return guarded({{"filePath", filePath}}, [&] {
        return update(pIP, nPort, color,
                      {uAreaId, RunMode, Timeout, RelateAllPro, RelateProNum, RelateProSerial, ImmePlay,
                       uAreaX, uAreaY, uWidth, uHeight},
                      {{0, DisplayMode, ClearMode, Speed, StayTime, RepeatTime}, filePath});
    });
}

int dynamicArea_AddAreaInfos_5G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                                Ouint8 RunMode, Ouint16 Timeout, Ouint8 RelateAllPro, Ouint16 RelateProNum,
                                Ouint16* RelateProSerial, Ouint8 ImmePlay, Ouint16 uAreaX, Ouint16 uAreaY,
                                Ouint16 uWidth, Ouint16 uHeight, HVareaframeHeader, Ouint8 nInfoCount,
                                DynamicAreaBaseInfo_5G** pInfo) noexcept {
    return guarded({{"pInfo", pInfo}}, [&] {
        const AreaRequest_5G area{uAreaId,  RunMode, Timeout, RelateAllPro, RelateProNum, RelateProSerial,
                                  ImmePlay, uAreaX,  uAreaY,  uWidth,       uHeight};
        if (!can_be_sent(pIP, nPort, area) || !in_range("nInfoCount", nInfoCount, 1, 255))
            return QM_FAILED + 0;
        std::vector<ContentItem_5G> items;
        for (const DynamicAreaBaseInfo_5G* info : std::span(pInfo, nInfoCount)) {
            const auto item = given({{"pInfo", info}}) ? item_of(*info) : std::nullopt;
            if (!item) return QM_FAILED + 0;
            items.push_back(*item);
        }
        return CBuild_DynamicArea_5H::dynamicArea_AddAreaInfos_5G(address_of(pIP, nPort, color), area, items);
    });
}

int dynamicArea_DelArea_5G(const char* pIP, Ouint32 nPort, Ouint8 uAreaId) noexcept {
    return delete_area(pIP, nPort, kFirstPort5, static_cast<Oint8>(uAreaId));
}

int dynamicArea_DelAreaS_5G(const char* pIP, Ouint32 nPort, Oint8 uAreaCount, Oint8* pAreaID) noexcept {
    return delete_areas(pIP, nPort, kFirstPort5, uAreaCount, pAreaID, uAreaCount > 0);
}

int dynamicArea_addDynamicArea(Ouint16, HVdynamicHeader*) noexcept { return nothing_to_do(); }
int dynamicArea_deleteDynamicArea(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_addTxt(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_fontPath_addTxt(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_changeTxt(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_fontPath_changeTxt(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_addPic(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_changePic(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_addFrame(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_changeFrame(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_removeFrame(Ouint16) noexcept { return nothing_to_do(); }
int dynamicArea_integrateDAreaFile(void) noexcept { return nothing_to_do(); }
