// The text and picture area of generation 6: longer page headers, speech, and pixels in a file of their own.
#pragma once

#include "program/PicturesArea.h"

namespace qm {

// The second part of the area header; 3 bytes.
struct qm_G6_area_header_p2 {
    Ouint8 BackGroundFlag = 0, Transparency = 0, AreaEqual = 0;
};

class PicturesArea_g6 : public PicturesArea {
  public:
    using PicturesArea::PicturesArea;

    // Replaces the picture page of that number; false when there is none.
    bool AreaChangePic(Ouint16 picID, const char* picPath, const qm_G6_page_header& header);

    // Speech; false, with nothing changed, for an empty text.
    bool EnableSound(const HVPicAreaSoundHeader_G6& header, const char* soundData);
    void DisableSound();

    void assemble(ProgramFiles& files) const override;

    qm_G6_area_header_p2 m_aHeader_p2;

  private:
    void append_sound(ByteWriter& out) const;

    HVPicAreaSoundHeader_G6 m_sdHeader{};
    std::string m_soundData; // empty: no speech
};

} // namespace qm
