#include "DynamicArea/DynamicArea_6G_records.h"

#include "support/reason.h"

namespace qm {
namespace {

Bytes bytes_of(const std::string& text) {
    return {reinterpret_cast<const Ouint8*>(text.data()), text.size()};
}

} // namespace

void CProtocol_PageSytle_6G::append(ByteWriter& out) const {
    out.u32(PageDataLen).u8(PageStyle).u8(DisplayMode).u8(ClearMode).u8(Speed).u16(StayTime).u8(RepeatTime);
    out.u16(ValidLen).zeros(9).u32(Dataoffset).u32(DataLen);
}

CData CProtocol_PageSytle_6G::GetData() const {
    return serialised([&](ByteWriter& out) { append(out); });
}

void CProtocol_SoundData::assign(const HVSound_6G& sound) {
    SoundPerson = static_cast<Ouint8>(sound.SoundPerson);
    SoundVolum = static_cast<Ouint8>(sound.SoundVolum);
    SoundSpeed = static_cast<Ouint8>(sound.SoundSpeed);
    SoundDataMode = static_cast<Ouint8>(sound.SoundDataMode);
    SoundReplayTimes = static_cast<Ouint32>(sound.SoundReplayTimes);
    SoundReplayDelay = static_cast<Ouint32>(sound.SoundReplayDelay);
    SoundReservedParaLen = static_cast<Ouint8>(sound.SoundReservedParaLen);
    Soundnumdeal = static_cast<Ouint8>(sound.Soundnumdeal);
    Soundlanguages = static_cast<Ouint8>(sound.Soundlanguages);
    Soundwordstyle = static_cast<Ouint8>(sound.Soundwordstyle);
    SoundData.assign(reinterpret_cast<const char*>(sound.SoundData), sound.SoundDataLen);
}

void CProtocol_SoundData::append(ByteWriter& out) const {
    out.u8(SoundPerson).u8(SoundVolum).u8(SoundSpeed).u8(SoundDataMode);
    out.u32(SoundReplayTimes).u32(SoundReplayDelay);
    out.u8(SoundReservedParaLen).u8(Soundnumdeal).u8(Soundlanguages).u8(Soundwordstyle);
    out.u32(static_cast<Ouint32>(SoundData.size())).bytes(bytes_of(SoundData));
}

CData CProtocol_SoundData::GetData() const {
    return serialised([&](ByteWriter& out) { append(out); });
}

bool is_sendable(const HVSound_6G& sound) {
    return in_range("SoundDataLen", sound.SoundDataLen, 0, CProtocol_SoundData::kMaxText) &&
           given({{"SoundData", sound.SoundData, sound.SoundDataLen != 0}});
}

void CProtocol_SoundIndepend_Insert_6G::append(ByteWriter& out) const {
    out.u8(StoreFlag).u8(VoiceFlg).zeros(3).u32(m_oSoundData.GetSize());
    m_oSoundData.append(out);
}

CData CProtocol_InsertSoundIndepend_All_6G::GetData() const {
    return serialised([&](ByteWriter& out) {
        CVemarProtocol_DynamicAreaCmdHeader{.Cmd = kInsert}.append(out);
        m_oSound.append(out);
    });
}

void CProtocol_SoundIndepend_Update_6G::append(ByteWriter& out) const {
    out.u8(VoiceID).u32(m_oSoundData.GetSize());
    m_oSoundData.append(out);
}

CData CProtocol_UpdateSoundIndepend_All_6G::GetData() const {
    return serialised([&](ByteWriter& out) {
        CVemarProtocol_DynamicAreaCmdHeader{.Cmd = kUpdate}.append(out);
        out.u8(StoreFlag).u8(VoiceNum);
        for (const CProtocol_SoundIndepend_Update_6G& sound : m_vctSound) sound.append(out);
    });
}

void CVemarProtocol_DynamicArea_6G::CalculateAreaDataLen() {
    AreaFFlag = 0;
    AreaDataLen = 33;
    if (SoundFlag) AreaDataLen += SoundData.GetSize();
    AreaDataLen += static_cast<Ouint32>(vctPageStyle.size()) * CProtocol_PageSytle_6G::GetSize();
    if (names_programs()) AreaDataLen += 2U * RelateProNum;
}

Ouint32 CVemarProtocol_DynamicArea_6G::GetSize() {
    return GetDataSize_NotIncludePageData() + GetDataSize_Page();
}

Ouint32 CVemarProtocol_DynamicArea_6G::GetDataSize_NotIncludePageData() {
    CalculateAreaDataLen();
    return AreaDataLen + 4;
}

Ouint32 CVemarProtocol_DynamicArea_6G::GetDataSize_Page() const {
    Ouint32 size = 0;
    for (const CData& page : vctPicPageData) size += page.m_nDataLen;
    return size;
}

void CVemarProtocol_DynamicArea_6G::append_description(ByteWriter& out) {
    CalculateAreaDataLen();
    out.u32(AreaDataLen).u8(AreaId).u8(RunMode).u16(Timeout).u8(RelateAllPro).u16(RelateProNum);
    if (names_programs())
        for (const Ouint16 serial : vctRelateProSerial) out.u16(serial);
    out.u8(ImmePlay).u32(0).u8(AreaType).u16(AreaX).u16(AreaY).u16(AreaWidth).u16(AreaHeight);
    out.u8(AreaFFlag).u8(BackGroundFlag).u8(Transparency).u8(AreaEqual).u8(SoundFlag);
    if (SoundFlag) SoundData.append(out);
    out.zeros(5).u16(static_cast<Ouint16>(vctPageStyle.size()));
    for (const CProtocol_PageSytle_6G& page : vctPageStyle) page.append(out);
}

void CVemarProtocol_DynamicArea_6G::append_pages(ByteWriter& out) const {
    for (const CData& page : vctPicPageData) out.bytes(page.bytes());
}

CData CVemarProtocol_DynamicArea_6G::GetData_NotIncludePageData() {
    return serialised([&](ByteWriter& out) { append_description(out); });
}

CData CVemarProtocol_DynamicArea_6G::GetData_Page() const {
    return serialised([&](ByteWriter& out) { append_pages(out); });
}

CData CVemarProtocol_DynamicArea_6G::GetData() {
    return serialised([&](ByteWriter& out) {
        append_description(out);
        append_pages(out);
    });
}

} // namespace qm
