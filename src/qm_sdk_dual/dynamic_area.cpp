// Dynamic areas of generation 6.
#include "DynamicArea/DynamicArea_6G.h"
#include "qm_sdk_dual/dynamic_exports.h"

using namespace qm;

namespace {

constexpr Ouint8 kDynamicAreaType = 0x10;
constexpr Ouint16 kMostPrograms = 512; // of one area alone

qm_G5_area_header place(Ouint16 x, Ouint16 y, Ouint16 width, Ouint16 height) {
    return {kDynamicAreaType, x, y, width, height};
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

AreaRequest picture_request(Ouint8 id, const qm_G5_area_header& where, const HVpageHeader_G6& page,
                            const char* path) {
    return {id, where, page_header_of(page), {}, nullptr, path};
}

AreaRequest text_request(Ouint8 id, const HVareaHeader_G6& header, const HVpageHeader_G6& page,
                         const char* fontName, const char* text) {
    const auto where = place(header.AreaX, header.AreaY, header.AreaWidth, header.AreaHeight);
    AreaRequest area{id, where, page_header_of(page), font_data_of(page), fontName, text};
    if (header.stSoundData.SoundFlag == 1) area.sound = header.stSoundData;
    return area;
}

bool can_be_built(const AreaRequest& area) {
    return has_pixels("AreaWidth", area.header.AreaWidth, "AreaHeight", area.header.AreaHeight) &&
           (!area.sound || is_sendable(*area.sound));
}

int update(const char* ip, Ouint32 port, E_ScreenColor_G56 color, std::span<const AreaRequest> areas) {
    if (!valid_address(ip, port, kFirstPort6) || !std::all_of(areas.begin(), areas.end(), can_be_built))
        return QM_FAILED;
    return CBuild_DynamicArea_6G::UpdateOrAdd(address_of(ip, port, color), areas);
}

// A missing list of programs is noticed only when the area is put together.
int update_one(const char* ip, Ouint32 port, E_ScreenColor_G56 color, AreaRequest area,
               std::optional<RelatedPrograms> programs) {
    if (programs && !in_range("RelateProNum", programs->count, 0, kMostPrograms)) return QM_FAILED;
    area.programs = programs;
    return update(ip, port, color, {&area, 1});
}

int update_text(const char* ip, Ouint32 port, E_ScreenColor_G56 color, Ouint8 id,
                const HVareaHeader_G6* header, const HVpageHeader_G6* page, const char* fontName,
                const char* text, std::optional<RelatedPrograms> programs = {}) noexcept {
    return guarded({{"oAreaHeader_G6", header},
                    {"stPageHeader", page},
                    {"fontName", fontName},
                    {"strAreaTxtContent", text}},
                   [&] {
                       return update_one(ip, port, color, text_request(id, *header, *page, fontName, text),
                                         programs);
                   });
}

int update_picture(const char* ip, Ouint32 port, E_ScreenColor_G56 color, Ouint8 id,
                   const qm_G5_area_header& where, const HVpageHeader_G6* page, const char* path,
                   std::optional<RelatedPrograms> programs = {}) noexcept {
    return guarded({{"pheader", page}, {"picPath", path}}, [&] {
        return update_one(ip, port, color, picture_request(id, where, *page, path), programs);
    });
}

// What one record of several areas holds: a text in a font, or the path of a picture.
enum class Content { text, picture };

bool has_content(const DynamicAreaParams& params, Content content) {
    return given({{"strAreaTxtContent", params.strAreaTxtContent},
                  {"fontName", params.fontName, content == Content::text}});
}

AreaRequest request_of(const DynamicAreaParams& params, Content content) {
    const auto text = [](const Ouint8* bytes) { return reinterpret_cast<const char*>(bytes); };
    const HVareaHeader_G6 header = params.oAreaHeader_G6;
    const HVpageHeader_G6 page = params.stPageHeader;
    return text_request(params.uAreaId, header, page,
                        content == Content::text ? text(params.fontName) : nullptr,
                        text(params.strAreaTxtContent));
}

int update_several(const char* ip, Ouint32 port, E_ScreenColor_G56 color, Ouint8 count,
                   const DynamicAreaParams* params, Content content,
                   std::optional<RelatedPrograms> programs = {}) noexcept {
    return guarded({{"pParams", params}}, [&] {
        if (!in_range("uAreaCount", count, 1, 255) || (programs && programs->missing())) return QM_FAILED + 0;
        std::vector<AreaRequest> areas;
        for (const DynamicAreaParams& one : std::span(params, count)) {
            if (!has_content(one, content)) return QM_FAILED + 0;
            AreaRequest& area = areas.emplace_back(request_of(one, content));
            area.programs = programs;
            if (programs) area.sound.reset(); // an area with programs has no speech here
        }
        return update(ip, port, color, areas);
    });
}

} // namespace

int dynamicArea_AddAreaTxt_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                              Ouint16 uAreaX, Ouint16 uAreaY, Ouint16 uWidth, Ouint16 uHeight,
                              const char* fontName, Ouint8 nFontSize,
                              const char* strAreaTxtContent) noexcept {
    return guarded({{"fontName", fontName}, {"strAreaTxtContent", strAreaTxtContent}}, [&] {
        if (!has_pixels("uWidth", uWidth, "uHeight", uHeight)) return QM_FAILED + 0;
        const AreaRequest area{uAreaId,
                               place(uAreaX, uAreaY, uWidth, uHeight),
                               default_page(uWidth),
                               default_font(nFontSize),
                               fontName,
                               strAreaTxtContent};
        return update(pIP, nPort, color, {&area, 1});
    });
}

int dynamicArea_AddAreaTxtDetails_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                                     HVareaHeader_G6* oAreaHeader_G6, HVpageHeader_G6* stPageHeader,
                                     const char* fontName, const char* strAreaTxtContent) noexcept {
    return update_text(pIP, nPort, color, uAreaId, oAreaHeader_G6, stPageHeader, fontName, strAreaTxtContent);
}

int dynamicArea_AddAreaTxtDetails_WithProgram_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                                 Ouint8 uAreaId, HVareaHeader_G6* oAreaHeader_G6,
                                                 HVpageHeader_G6* stPageHeader, const char* fontName,
                                                 const char* strAreaTxtContent, Ouint16 RelateProNum,
                                                 Ouint16* RelateProSerial) noexcept {
    return update_text(pIP, nPort, color, uAreaId, oAreaHeader_G6, stPageHeader, fontName, strAreaTxtContent,
                       RelatedPrograms{RelateProNum, RelateProSerial});
}

int dynamicArea_AddAreaPic_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaId,
                              Ouint16 AreaX, Ouint16 AreaY, Ouint16 AreaWidth, Ouint16 AreaHeight,
                              HVpageHeader_G6* pheader, const char* picPath) noexcept {
    return update_picture(pIP, nPort, color, uAreaId, place(AreaX, AreaY, AreaWidth, AreaHeight), pheader,
                          picPath);
}

int dynamicArea_AddAreaPic_WithProgram_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                          Ouint8 uAreaId, Ouint16 AreaX, Ouint16 AreaY, Ouint16 AreaWidth,
                                          Ouint16 AreaHeight, HVpageHeader_G6* pheader, const char* picPath,
                                          Ouint16 RelateProNum, Ouint16* RelateProSerial) noexcept {
    return update_picture(pIP, nPort, color, uAreaId, place(AreaX, AreaY, AreaWidth, AreaHeight), pheader,
                          picPath, RelatedPrograms{RelateProNum, RelateProSerial});
}

int dynamicAreaS_AddTxtDetails_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaCount,
                                  DynamicAreaParams* pParams) noexcept {
    return update_several(pIP, nPort, color, uAreaCount, pParams, Content::text);
}

int dynamicAreaS_AddTxtDetails_WithProgram_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                              Ouint8 uAreaCount, DynamicAreaParams* pParams,
                                              Ouint16 RelateProNum, Ouint16* RelateProSerial) noexcept {
    return update_several(pIP, nPort, color, uAreaCount, pParams, Content::text,
                          RelatedPrograms{RelateProNum, RelateProSerial});
}

int dynamicAreaS_AddAreaPic_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color, Ouint8 uAreaCount,
                               DynamicAreaParams* pParams) noexcept {
    return update_several(pIP, nPort, color, uAreaCount, pParams, Content::picture);
}

int dynamicAreaS_AddAreaPic_WithProgram_6G(const char* pIP, Ouint32 nPort, E_ScreenColor_G56 color,
                                           Ouint8 uAreaCount, DynamicAreaParams* pParams,
                                           Ouint16 RelateProNum, Ouint16* RelateProSerial) noexcept {
    return update_several(pIP, nPort, color, uAreaCount, pParams, Content::picture,
                          RelatedPrograms{RelateProNum, RelateProSerial});
}

int dynamicArea_InsertSoundIndepend(const char* pIP, Ouint32 nPort, HVSoundDepend_6G stSoundData,
                                    Ouint8 VoiceFlg, Ouint8 StoreFlag) noexcept {
    return guarded([&] {
        if (!valid_address(pIP, nPort, kFirstPort6)) return QM_FAILED + 0;
        return CBuild_DynamicArea_6G::dynamicArea_InsertSoundIndepend(pIP, static_cast<Ouint16>(nPort),
                                                                      stSoundData, VoiceFlg, StoreFlag);
    });
}

int dynamicArea_UpdateSoundIndepend(const char* pIP, Ouint32 nPort, HVSoundDepend_6G* stSoundData,
                                    Ouint16 nSoundDataCount, Ouint8 StoreFlag) noexcept {
    return guarded({{"stSoundData", stSoundData}}, [&] {
        if (!valid_address(pIP, nPort, kFirstPort6)) return QM_FAILED + 0;
        return CBuild_DynamicArea_6G::dynamicArea_UpdateSoundIndepend(
            pIP, static_cast<Ouint16>(nPort), {stSoundData, nSoundDataCount}, StoreFlag);
    });
}

int dynamicArea_DelArea_6G(const char* pIP, Ouint32 nPort, Oint8 uAreaId) noexcept {
    return delete_area(pIP, nPort, kFirstPort6, uAreaId);
}

int dynamicArea_DelAreas_6G(const char* pIP, Ouint32 nPort, Oint8 uAreaCount, Oint8* pAreaID) noexcept {
    return delete_areas(pIP, nPort, kFirstPort6, uAreaCount, pAreaID, true);
}
