// Dynamic areas of generation 6.
#include "DynamicArea/DynamicArea_6G.h"
#include "qm_sdk_dual/exports.h"

using namespace qm;

namespace {

constexpr Ouint8 kDynamicAreaType = 0x10;

bool valid_address(const char* ip, Ouint32 port) { return ip && port >= 1024 && port <= 0xFFFF; }

AreaRequest area_request(Ouint8 id, Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height,
                         const qm_G6_page_header& page) {
    return {id, {kDynamicAreaType, x, y, width, height}, page, nullptr};
}

// A rectangle without pixels has nothing to show, and a longer side than this cannot be drawn.
bool has_pixels(const AreaRequest& area) {
    constexpr Ouint16 kLongestSide = 32767;
    const Ouint16 width = area.header.AreaWidth, height = area.header.AreaHeight;
    return width > 0 && height > 0 && width <= kLongestSide && height <= kLongestSide;
}

// What a text without settings of its own looks like: red, running to the left.
qm_G6_page_header default_page(Ouint16 width) {
    qm_G6_page_header page;
    page.DisplayMode = 4;
    page.Speed = 32;
    page.RepeatTime = 1;
    page.ValidLen = width;
    return page;
}

qm_G5_G6_fontData default_font(Ouint8 points) {
    qm_G5_G6_fontData font;
    font.arrMode = SINGLELINE;
    font.fontSize = points;
    font.color = eRed;
    font.Halign = 1;
    font.Valign = 1;
    return font;
}

} // namespace

int dynamicArea_AddAreaTxt_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                              Ouint16 uAreaX, Ouint16 uAreaY, Ouint16 uWidth, Ouint16 uHeight,
                              const char* fontName, Ouint8 nFontSize,
                              const char* strAreaTxtContent) noexcept {
    if (!valid_address(pIP, nPort) || !fontName || !strAreaTxtContent) return QM_FAILED;
    const AreaRequest area = area_request(uAreaId, uAreaX, uAreaY, uWidth, uHeight, default_page(uWidth));
    if (!has_pixels(area)) return QM_FAILED;
    return guarded([&] {
        return CBuild_DynamicArea_6G().UpdateOrAdd_AreaWithTxt({pIP, static_cast<Ouint16>(nPort), color},
                                                               area, default_font(nFontSize), fontName,
                                                               strAreaTxtContent);
    });
}

int dynamicArea_AddAreaTxtDetails_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                                     HVareaHeader_G6* oAreaHeader_G6, HVpageHeader_G6* stPageHeader,
                                     const char* fontName, const char* strAreaTxtContent) noexcept {
    if (!valid_address(pIP, nPort) || !fontName || !strAreaTxtContent || !oAreaHeader_G6 || !stPageHeader)
        return QM_FAILED;
    const HVareaHeader_G6& header = *oAreaHeader_G6;
    AreaRequest area = area_request(uAreaId, header.AreaX, header.AreaY, header.AreaWidth, header.AreaHeight,
                                    page_header_of(*stPageHeader));
    const HVSound_6G sound = header.stSoundData;
    if (!has_pixels(area) || (sound.SoundFlag == 1 && !is_sendable(sound))) return QM_FAILED;
    area.sound = &sound;
    return guarded([&] {
        return CBuild_DynamicArea_6G().UpdateOrAdd_AreaWithTxt({pIP, static_cast<Ouint16>(nPort), color},
                                                               area, font_data_of(*stPageHeader), fontName,
                                                               strAreaTxtContent);
    });
}

int dynamicArea_AddAreaPic_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                              Ouint16 AreaX, Ouint16 AreaY, Ouint16 AreaWidth, Ouint16 AreaHeight,
                              HVpageHeader_G6* pheader, const char* picPath) noexcept {
    if (!valid_address(pIP, nPort) || !pheader || !picPath) return QM_FAILED;
    const AreaRequest area =
        area_request(uAreaId, AreaX, AreaY, AreaWidth, AreaHeight, page_header_of(*pheader));
    if (!has_pixels(area)) return QM_FAILED;
    return guarded([&] {
        return CBuild_DynamicArea_6G().UpdateOrAdd_AreaWithPic({pIP, static_cast<Ouint16>(nPort), color},
                                                               area, picPath);
    });
}
