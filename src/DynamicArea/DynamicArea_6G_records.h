// The payload that puts dynamic areas on a generation-6 controller.
#pragma once

#include "DynamicArea/DynamicArea.h"

#include <string>

namespace qm {

// One page: 30 bytes.
struct CProtocol_PageSytle_6G {
    Ouint32 PageDataLen = 26; // the record without this field
    Ouint8 PageStyle = 0, DisplayMode = 0, ClearMode = 0, Speed = 0;
    Ouint16 StayTime = 0;
    Ouint8 RepeatTime = 0;
    Ouint16 ValidLen = 0;
    Ouint32 Dataoffset = 0; // in the page-data block of the whole payload
    Ouint32 DataLen = 0;

    static constexpr Ouint32 GetSize() { return 30; }
    void append(ByteWriter& out) const;
    [[nodiscard]] CData GetData() const;
};

// Spoken text. Its size is a 16-bit quantity.
struct CProtocol_SoundData {
    static constexpr Ouint32 kFixedSize = 20;
    static constexpr Ouint32 kMaxText = 0xFFFF - kFixedSize;

    Ouint8 SoundPerson = 0, SoundVolum = 0, SoundSpeed = 0, SoundDataMode = 0;
    Ouint32 SoundReplayTimes = 0, SoundReplayDelay = 0;
    Ouint8 SoundReservedParaLen = 0, Soundnumdeal = 0, Soundlanguages = 0, Soundwordstyle = 0;
    std::string SoundData;

    void assign(const HVSound_6G& sound);
    [[nodiscard]] Ouint16 GetSize() const { return static_cast<Ouint16>(kFixedSize + SoundData.size()); }
    void append(ByteWriter& out) const;
    [[nodiscard]] CData GetData() const;
};

// Whether the text of a sound record fits and is there.
[[nodiscard]] bool is_sendable(const HVSound_6G& sound);

// A text that is spoken without an area, and the whole command that inserts it.
struct CProtocol_SoundIndepend_Insert_6G {
    Ouint8 StoreFlag = 0, VoiceFlg = 0;
    CProtocol_SoundData m_oSoundData;

    [[nodiscard]] Ouint32 GetSize() const { return 9U + m_oSoundData.GetSize(); }
    void append(ByteWriter& out) const;
};

struct CProtocol_InsertSoundIndepend_All_6G {
    static constexpr Ouint8 kInsert = 7;

    CProtocol_SoundIndepend_Insert_6G m_oSound;

    [[nodiscard]] CData GetData() const;
};

// A text that replaces an entry of the controller's list of voices, and the whole command for several.
struct CProtocol_SoundIndepend_Update_6G {
    Ouint8 VoiceID = 0;
    CProtocol_SoundData m_oSoundData;

    [[nodiscard]] Ouint32 GetSize() const { return 5U + m_oSoundData.GetSize(); }
    void append(ByteWriter& out) const;
};

struct CProtocol_UpdateSoundIndepend_All_6G {
    static constexpr Ouint8 kUpdate = 2;

    Ouint8 StoreFlag = 0;
    Ouint8 VoiceNum = 0; // the length of the list, cut to 8 bits
    std::vector<CProtocol_SoundIndepend_Update_6G> m_vctSound;

    [[nodiscard]] CData GetData() const;
};

// One area. Borders are never sent.
class CVemarProtocol_DynamicArea_6G {
  public:
    Ouint32 AreaDataLen = 33; // of an area without anything
    Ouint8 AreaId = 0;
    Ouint8 RunMode = 0;
    Ouint16 Timeout = 5;
    Ouint8 RelateAllPro = 1;
    Ouint16 RelateProNum = 0;
    std::vector<Ouint16> vctRelateProSerial;
    Ouint8 ImmePlay = 1;
    Ouint8 AreaType = 0x10;
    Ouint16 AreaX = 0, AreaY = 0, AreaWidth = 64, AreaHeight = 32;
    Ouint8 AreaFFlag = 0;
    Ouint8 BackGroundFlag = 0, Transparency = 0, AreaEqual = 0;
    Ouint8 SoundFlag = 0;
    CProtocol_SoundData SoundData;
    std::vector<CProtocol_PageSytle_6G> vctPageStyle;
    std::vector<CData> vctPicPageData;

    // Sets AreaDataLen, the length of the description after that field, without the pixel data; and clears
    // the border flag, whatever was asked for.
    void CalculateAreaDataLen();

    Ouint32 GetSize();
    Ouint32 GetDataSize_NotIncludePageData();
    [[nodiscard]] Ouint32 GetDataSize_Page() const;
    CData GetData_NotIncludePageData();
    [[nodiscard]] CData GetData_Page() const;
    CData GetData();

    void append_description(ByteWriter& out);
    void append_pages(ByteWriter& out) const;

  private:
    [[nodiscard]] bool names_programs() const { return RelateAllPro == 0 && RelateProNum != 0; }
};

} // namespace qm
