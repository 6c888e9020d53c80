#include "program/PicturesArea_g6.h"

#include <algorithm>

namespace qm {

bool PicturesArea_g6::AreaChangePic(Ouint16 picID, const char* picPath, const qm_G6_page_header& header) {
    const auto known = std::find_if(m_pictures.begin(), m_pictures.end(),
                                    [picID](const Picture& picture) { return picture.id == picID; });
    if (known == m_pictures.end()) return false;
    known->path = picPath;
    known->header = header;
    return true;
}

bool PicturesArea_g6::EnableSound(const HVPicAreaSoundHeader_G6& header, const char* soundData) {
    if (*soundData == '\0') return false;
    m_soundData = soundData;
    m_sdHeader = header;
    return true;
}

void PicturesArea_g6::DisableSound() {
    m_sdHeader = {};
    m_soundData.clear();
}

// Without speech one byte 0; else flag 1, the 16 bytes of the settings, text length u32, text.
void PicturesArea_g6::append_sound(ByteWriter& out) const {
    out.u8(!m_soundData.empty());
    if (m_soundData.empty()) return;
    const HVPicAreaSoundHeader_G6& s = m_sdHeader;
    out.u8(s.SoundPerson).u8(s.SoundVolum).u8(s.SoundSpeed).u8(s.SoundDataMode);
    out.u32(s.SoundReplayTimes).u32(s.SoundReplayDelay);
    out.u8(s.SoundReservedParaLen).u8(s.Soundnumdeal).u8(s.Soundlanguages).u8(s.Soundwordstyle);
    out.u32(static_cast<Ouint32>(m_soundData.size())).text(m_soundData.data(), m_soundData.size());
}

// Area header 9; border; header part two 3; speech; zero 5; page count u16; for each page: 26 as u32, page
// header 18, position in the data file u32, length u32.
void PicturesArea_g6::assemble(ProgramFiles& files) const {
    ByteWriter out(files.program);
    m_aHeader.append(out);
    append_frame(out);
    out.u8(m_aHeader_p2.BackGroundFlag).u8(m_aHeader_p2.Transparency).u8(m_aHeader_p2.AreaEqual);
    append_sound(out);
    out.zeros(5).u16(static_cast<Ouint16>(pages.size()));
    for (const PageInFile& page : pages_in_file()) {
        out.u32(26);
        page.header.append_g6(out);
        out.u32(files.add_pixels(page.pixels)).u32(CData::length_of(page.pixels));
    }
}

} // namespace qm
