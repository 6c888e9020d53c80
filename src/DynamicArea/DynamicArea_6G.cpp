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

// Sounds are sent without a ping and as a long payload, whatever their size.
int send_sound(const char* ip, Ouint16 port, Bytes payload) {
    HV_Client client;
    if (const int code = client.init(ip, port); code != QM_OK) return code;
    Answer answer;
    return client.send_recv_cmd_1K2(hv_GPR_5HDynamicArea, 0, payload, answer);
}

// Renders an area and adds it with its pages; false when that cannot be.
bool add_rendered(CDynamicArea_ALL_6G& all, const AreaRequest& area) {
    PicturesArea_g6 content(PageOrder::playing);
    content.setGeometry(area.header);
    if (area.fontName)
        content.AreaAddTxt(area.content, area.fontName, area.font, area.page);
    else
        content.AreaAddPic(0, area.content, area.page);
    return content.PreparePageData() && !(area.programs && area.programs->missing()) &&
           all.AddArea(area) == QM_OK && all.AddPages(area.id, std::move(content.pages)) == QM_OK;
}

} // namespace

Oint32 CDynamicArea_ALL_6G::AddArea(const AreaRequest& area) {
    for (const CVemarProtocol_DynamicArea_6G& other : m_vctDynamicArea)
        if (other.AreaId == area.id) {
            say(kAreaExists, area.id);
            return fail(QM_FAILED, "Two areas have the number %d.", area.id);
        }
    CVemarProtocol_DynamicArea_6G& record = m_vctDynamicArea.emplace_back();
    record.AreaId = area.id;
    record.AreaX = area.header.AreaX;
    record.AreaY = area.header.AreaY;
    record.AreaWidth = area.header.AreaWidth;
    record.AreaHeight = area.header.AreaHeight;
    record.SoundFlag = area.sound && area.sound->SoundFlag == 1;
    if (record.SoundFlag) record.SoundData.assign(*area.sound);
    if (!area.programs) return QM_OK;
    const auto programs = area.programs->list();
    record.ImmePlay = 0;
    record.RelateProNum = area.programs->count;
    record.RelateAllPro = programs.empty();
    record.vctRelateProSerial.assign(programs.begin(), programs.end());
    return QM_OK;
}

Oint32 CDynamicArea_ALL_6G::AddPages(Ouint8 areaId, std::vector<Page>&& pages) {
    if (m_vctDynamicArea.empty()) {
        say(kNoSuchArea, areaId);
        return fail(QM_FAILED, "There is no area %d.", areaId);
    }
    // The page-data block holds the areas in list order, so everything up to here lies before these pages.
    Ouint32 offset = 0;
    CVemarProtocol_DynamicArea_6G* target = &m_vctDynamicArea.front();
    for (CVemarProtocol_DynamicArea_6G& area : m_vctDynamicArea) {
        offset += area.GetDataSize_Page();
        target = &area;
        if (area.AreaId == areaId) break;
    }
    for (auto& [header, pixels] : pages) {
        target->vctPageStyle.push_back({26, header.PageStyle, header.DisplayMode, header.ClearMode,
                                        header.Speed, header.StayTime, header.RepeatTime, header.ValidLen,
                                        offset, pixels.m_nDataLen});
        offset += pixels.m_nDataLen;
        target->vctPicPageData.push_back(std::move(pixels));
    }
    return QM_OK;
}

CData CDynamicArea_ALL_6G::GetDynamicAreaData() {
    std::size_t size = m_oCmdHeader.GetSize() + sizeof(Ouint16);
    for (auto& area : m_vctDynamicArea) size += area.GetSize();
    const auto append = [this](ByteWriter& out) {
        m_oCmdHeader.append(out);
        out.u16(static_cast<Ouint16>(m_vctDynamicArea.size()));
        for (auto& area : m_vctDynamicArea) area.append_description(out);
        for (const auto& area : m_vctDynamicArea) area.append_pages(out);
    };
    return serialised(append, size);
}

int CBuild_DynamicArea_6G::UpdateOrAdd(const ControllerAddress& to, std::span<const AreaRequest> areas) {
    return send_built(to, [areas] {
        CDynamicArea_ALL_6G all;
        for (const AreaRequest& area : areas)
            if (!add_rendered(all, area)) return CData();
        return all.GetDynamicAreaData();
    });
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
