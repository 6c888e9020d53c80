#include "DynamicArea/DynamicArea_6G.h"

#include "DynamicArea/DynamicArea.h"
#include "support/message.h"

namespace qm {
namespace {

// Messages in GB2312.
constexpr char kAreaExists[] = " \xC7\xF8\xD3\xF2ID\xA3\xBA%d \xD2\xD1\xB4\xE6\xD4\xDA\xA3\xA1\n";
constexpr char kNoSuchArea[] =
    " \xC7\xF8\xD3\xF2ID\xA3\xBA%d \xB2\xBB\xB4\xE6\xD4\xDA\xA3\xA1\xCE\xDE\xB7\xA8"
    "\xD4\xF6\xBC\xD3\xD2\xB3\xC3\xE6\xCA\xFD\xBE\xDD\xA3\xA1\n";

} // namespace

CVemarProtocol_DynamicArea_6G* CDynamicArea_ALL_6G::find(Ouint8 areaId) {
    for (const auto& area : m_vctDynamicArea)
        if (area->AreaId == areaId) return area.get();
    return nullptr;
}

Oint32 CDynamicArea_ALL_6G::AddArea(Ouint8 areaId, const qm_G5_area_header& header, bool frameFlag,
                                    bool soundFlag, Ouint8 transparency, Ouint8 areaEqual) {
    if (find(areaId)) {
        say(kAreaExists, areaId);
        return QM_FAILED;
    }
    auto area = std::make_unique<CVemarProtocol_DynamicArea_6G>();
    area->AreaId = areaId;
    area->AreaX = header.AreaX;
    area->AreaY = header.AreaY;
    area->AreaWidth = header.AreaWidth;
    area->AreaHeight = header.AreaHeight;
    area->AreaFFlag = frameFlag;
    area->SoundFlag = soundFlag;
    area->Transparency = transparency;
    area->AreaEqual = areaEqual;
    m_vctDynamicArea.push_back(std::move(area));
    return QM_OK;
}

Oint32 CDynamicArea_ALL_6G::AddArea(Ouint8 areaId, const qm_G5_area_header& header, bool frameFlag,
                                    Ouint8 transparency, Ouint8 areaEqual, const HVSound_6G& sound) {
    const bool speaks = sound.SoundFlag == 1;
    const Oint32 code = AddArea(areaId, header, frameFlag, speaks, transparency, areaEqual);
    if (code == QM_OK && speaks) m_vctDynamicArea.back()->SoundData.assign(sound);
    return code;
}

Oint32 CDynamicArea_ALL_6G::AddPage(Ouint8 areaId, const qm_G6_page_header& page, Bytes data) {
    if (m_vctDynamicArea.empty()) {
        say(kNoSuchArea, areaId);
        return QM_FAILED;
    }
    // The page-data block holds the areas in list order, so everything up to here lies before this page.
    Ouint32 offset = 0;
    CVemarProtocol_DynamicArea_6G* target = nullptr;
    for (const auto& area : m_vctDynamicArea) {
        offset += area->GetDataSize_Page();
        target = area.get();
        if (area->AreaId == areaId) break;
    }
    CProtocol_PageSytle_6G record;
    record.PageStyle = page.PageStyle;
    record.DisplayMode = page.DisplayMode;
    record.ClearMode = page.ClearMode;
    record.Speed = page.Speed;
    record.StayTime = page.StayTime;
    record.RepeatTime = page.RepeatTime;
    record.ValidLen = page.ValidLen;
    record.Dataoffset = offset;
    record.DataLen = static_cast<Ouint32>(data.size());
    target->vctPageStyle.push_back(record);
    target->vctPicPageData.emplace_back(data);
    return QM_OK;
}

Oint32 CDynamicArea_ALL_6G::AddPages(Ouint8 areaId, const qm_G6_page_header& page,
                                     std::span<const CData> pages) {
    for (const CData& data : pages)
        if (const Oint32 code = AddPage(areaId, page, data.bytes()); code != QM_OK) return code;
    return QM_OK;
}

CData CDynamicArea_ALL_6G::GetDynamicAreaData() {
    Frame payload;
    ByteWriter out(payload);
    m_oCmdHeader.append(out);
    out.u16(static_cast<Ouint16>(m_vctDynamicArea.size()));
    for (const auto& area : m_vctDynamicArea) area->append_description(out);
    for (const auto& area : m_vctDynamicArea) area->append_pages(out);
    return CData(Bytes(payload));
}

CData CBuild_DynamicArea_6G::BuildDynamicAreaData(const AreaRequest& area, std::span<const CData> pages) {
    m_oDynamicAll.Clear();
    if (area.sound)
        m_oDynamicAll.AddArea(area.id, area.header, false, 0, 0, *area.sound);
    else
        m_oDynamicAll.AddArea(area.id, area.header, false, false, 0, 0);
    if (m_oDynamicAll.AddPages(area.id, area.page, pages) != QM_OK) return {};
    return m_oDynamicAll.GetDynamicAreaData();
}

// Everything between the ping and the sending happens under the renderer's lock, since the screen settings
// of this controller must last until its pages are converted; the network is used outside it.
template <class AddContent>
int CBuild_DynamicArea_6G::update(const ControllerAddress& to, const AreaRequest& area, AddContent&& add) {
    Ouint16 controllerType = 0;
    if (const int code = ping_for_type(to.ip, to.port, controllerType); code != QM_OK) return code;
    CData payload;
    {
        const auto lock = lock_renderer();
        screen_settings().set(to.color, controllerType, DOUBLE_COLOR_PIXTYPE_1);
        PicturesArea_g6 content;
        content.setGeometry(area.header);
        add(content);
        if (!content.PreparePageData()) return QM_FAILED;
        payload = BuildDynamicAreaData(area, content.pixelDataList);
    }
    return send_dynamic_payload(to.ip, to.port, controllerType, payload.bytes());
}

int CBuild_DynamicArea_6G::UpdateOrAdd_AreaWithTxt(const ControllerAddress& to, const AreaRequest& area,
                                                   const qm_G5_G6_fontData& fontData, const char* fontName,
                                                   const char* text) {
    return update(to, area, [&](PicturesArea_g6& content) {
        if (is_font_file(fontName))
            content.fontPathToAreaAddTxt(text, fontName, fontData, area.page);
        else
            content.AreaAddTxt(text, fontName, fontData, area.page);
    });
}

int CBuild_DynamicArea_6G::UpdateOrAdd_AreaWithPic(const ControllerAddress& to, const AreaRequest& area,
                                                   const char* picPath) {
    return update(to, area, [&](PicturesArea_g6& content) { content.AreaAddPic(0, picPath, area.page); });
}

} // namespace qm
