#include "DynamicArea/DynamicArea_6G.h"

#include "support/message.h"
#include "tcpClient/HV_Client.h"

namespace qm {
namespace {

// Messages in GB2312.
constexpr char kAreaExists[] = " \xC7\xF8\xD3\xF2ID\xA3\xBA%d \xD2\xD1\xB4\xE6\xD4\xDA\xA3\xA1\n";
constexpr char kNoSuchArea[] =
    " \xC7\xF8\xD3\xF2ID\xA3\xBA%d \xB2\xBB\xB4\xE6\xD4\xDA\xA3\xA1\xCE\xDE\xB7\xA8"
    "\xD4\xF6\xBC\xD3\xD2\xB3\xC3\xE6\xCA\xFD\xBE\xDD\xA3\xA1\n";

void relate(CVemarProtocol_DynamicArea_6G& area, std::span<const Ouint16> programs) {
    area.ImmePlay = 0;
    area.RelateProNum = static_cast<Ouint16>(programs.size());
    area.RelateAllPro = programs.empty();
    area.vctRelateProSerial.assign(programs.begin(), programs.end());
}

// Sounds are sent without a ping and as a long payload, whatever their size.
int send_sound(const char* ip, Ouint16 port, Bytes payload) {
    HV_Client client;
    if (const int code = client.init(ip, port); code != QM_OK) return code;
    Answer answer;
    return client.send_recv_cmd_1K2(hv_GPR_5HDynamicArea, 0, payload, answer);
}

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
        return fail(QM_FAILED, "Two areas have the number %d.", areaId);
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

Oint32 CDynamicArea_ALL_6G::AddAreaRelateProg(Ouint8 areaId, const qm_G5_area_header& header, bool frameFlag,
                                              bool soundFlag, Ouint8 transparency, Ouint8 areaEqual,
                                              std::span<const Ouint16> programs) {
    const Oint32 code = AddArea(areaId, header, frameFlag, soundFlag, transparency, areaEqual);
    if (code == QM_OK) relate(*m_vctDynamicArea.back(), programs);
    return code;
}

Oint32 CDynamicArea_ALL_6G::AddAreaRelateProgSound(Ouint8 areaId, const qm_G5_area_header& header,
                                                   bool frameFlag, Ouint8 transparency, Ouint8 areaEqual,
                                                   std::span<const Ouint16> programs,
                                                   const HVSound_6G& sound) {
    const Oint32 code = AddArea(areaId, header, frameFlag, transparency, areaEqual, sound);
    if (code == QM_OK) relate(*m_vctDynamicArea.back(), programs);
    return code;
}

Oint32 CDynamicArea_ALL_6G::AddPage(Ouint8 areaId, const qm_G6_page_header& page, Bytes data) {
    if (m_vctDynamicArea.empty()) {
        say(kNoSuchArea, areaId);
        return fail(QM_FAILED, "There is no area %d.", areaId);
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
    ByteBuffer payload;
    ByteWriter out(payload);
    m_oCmdHeader.append(out);
    out.u16(static_cast<Ouint16>(m_vctDynamicArea.size()));
    for (const auto& area : m_vctDynamicArea) area->append_description(out);
    for (const auto& area : m_vctDynamicArea) area->append_pages(out);
    return CData(Bytes(payload));
}

Oint32 CBuild_DynamicArea_6G::add_area(const AreaRequest& area) {
    if (!area.programs) {
        if (area.sound) return m_oDynamicAll.AddArea(area.id, area.header, false, 0, 0, *area.sound);
        return m_oDynamicAll.AddArea(area.id, area.header, false, false, 0, 0);
    }
    if (area.programs->missing()) return QM_FAILED;
    const auto programs = area.programs->list();
    if (area.sound)
        return m_oDynamicAll.AddAreaRelateProgSound(area.id, area.header, false, 0, 0, programs, *area.sound);
    return m_oDynamicAll.AddAreaRelateProg(area.id, area.header, false, false, 0, 0, programs);
}

// Renders an area and adds it with its pages.
int CBuild_DynamicArea_6G::BuildDynamic_Area_Page(const AreaRequest& area) {
    PicturesArea_g6 content(PageOrder::playing);
    content.setGeometry(area.header);
    if (!area.fontName)
        content.AreaAddPic(0, area.content, area.page);
    else
        content.AreaAddTxt(area.content, area.fontName, area.font, area.page);
    if (!content.PreparePageData()) return QM_FAILED;
    if (const Oint32 code = add_area(area); code != QM_OK) return code;
    return m_oDynamicAll.AddPages(area.id, area.page, content.pixelDataList);
}

// Everything between the ping and the sending happens under the renderer's lock, since the screen settings
// of this controller must last until its pages are converted; the network is used outside it.
int CBuild_DynamicArea_6G::UpdateOrAdd(const ControllerAddress& to, std::span<const AreaRequest> areas) {
    Ouint16 controllerType = 0;
    if (const int code = ping_for_type(to.ip, to.port, controllerType); code != QM_OK) return code;
    CData payload;
    {
        const auto lock = lock_renderer();
        screen_settings().set(to.color, controllerType, DOUBLE_COLOR_PIXTYPE_1);
        m_oDynamicAll.Clear();
        for (const AreaRequest& area : areas)
            if (const int code = BuildDynamic_Area_Page(area); code != QM_OK) return code;
        payload = m_oDynamicAll.GetDynamicAreaData();
    }
    return send_dynamic_payload(to.ip, to.port, controllerType, payload.bytes());
}

int CBuild_DynamicArea_6G::dynamicArea_InsertSoundIndepend(const char* pIP, Ouint16 nPort,
                                                           const HVSoundDepend_6G& sound, Ouint8 VoiceFlg,
                                                           Ouint8 StoreFlag) {
    const HVSound_6G text = sound.stSound;
    if (!in_range("SoundDataLen", text.SoundDataLen, 1, CProtocol_SoundData::kMaxText) || !is_sendable(text))
        return QM_FAILED;
    CProtocol_InsertSoundIndepend_All_6G insertion;
    insertion.m_oSound.StoreFlag = StoreFlag;
    insertion.m_oSound.VoiceFlg = VoiceFlg;
    insertion.m_oSound.m_oSoundData.assign(text);
    return send_sound(pIP, nPort, insertion.GetData().bytes());
}

int CBuild_DynamicArea_6G::dynamicArea_UpdateSoundIndepend(const char* pIP, Ouint16 nPort,
                                                           std::span<const HVSoundDepend_6G> sounds,
                                                           Ouint8 StoreFlag) {
    if (!in_range("nSoundDataCount", static_cast<long>(sounds.size()), 1, 0xFFFF)) return QM_FAILED;
    CProtocol_UpdateSoundIndepend_All_6G update;
    update.StoreFlag = StoreFlag;
    update.VoiceNum = static_cast<Ouint8>(sounds.size());
    for (const HVSoundDepend_6G& sound : sounds) {
        const HVSound_6G text = sound.stSound;
        if (!is_sendable(text)) return QM_FAILED;
        CProtocol_SoundIndepend_Update_6G& entry = update.m_vctSound.emplace_back();
        entry.VoiceID = sound.VoiceID;
        entry.m_oSoundData.assign(text);
    }
    return send_sound(pIP, nPort, update.GetData().bytes());
}

} // namespace qm
