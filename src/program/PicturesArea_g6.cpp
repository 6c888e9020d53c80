#include "program/PicturesArea_g6.h"

#include <algorithm>

namespace qm {
namespace {

// The fields that the page headers of both generations have in common.
template <class Header> qm_G5_page_header common_fields(const Header& header) {
    return {header.PageStyle, header.DisplayMode, header.ClearMode, header.Speed,
            header.StayTime,  header.RepeatTime,  header.ValidLen};
}

template <class Header> qm_G5_G6_fontData text_fields(const Header& header) {
    return {header.arrMode,    header.fontSize, header.color,  flag(header.fontBold), flag(header.fontItalic),
            header.tdirection, header.txtSpace, header.Halign, header.Valign};
}

} // namespace

void qm_G6_page_header::append(ByteWriter& out) const {
    append_common(out);
    out.u8(0).u8(CartoonFrameRate).zeros(6).u8(BackNotValidFlag);
}

void PicturesArea_g6::AreaAddTxt(const char* str, const char* fontName, const qm_G5_G6_fontData& fontData,
                                 const qm_G6_page_header& header) {
    PicturesArea::AreaAddTxt(str, fontName, fontData, header);
    m_6pHeader = header;
}

void PicturesArea_g6::AreaChangeTxt(const char* str, const qm_G5_G6_fontData& fontData,
                                    const qm_G6_page_header& header) {
    PicturesArea::AreaChangeTxt(str, fontData, header);
    m_6pHeader = header;
}

void PicturesArea_g6::AreaAddPic(Ouint16 picID, const char* picPath, const qm_G6_page_header& header) {
    PicturesArea::AreaAddPic(picID, picPath, header);
    m_pageHeaderList_G6.push_back(header);
}

bool PicturesArea_g6::AreaChangePic(Ouint16 picID, const char* picPath, const qm_G6_page_header& header) {
    const auto known = std::find_if(m_pictures.begin(), m_pictures.end(),
                                    [picID](const Picture& picture) { return picture.id == picID; });
    if (known == m_pictures.end()) return false;
    known->path = picPath;
    known->header = header;
    m_pageHeaderList_G6[static_cast<std::size_t>(known - m_pictures.begin())] = header;
    return true;
}

bool PicturesArea_g6::EnableSound(const HVPicAreaSoundHeader_G6& header, const char* soundData) {
    if (*soundData == '\0') return false;
    m_sdHeader = header;
    m_soundData = soundData;
    m_enableSound = true;
    return true;
}

void PicturesArea_g6::DisableSound() {
    m_enableSound = false;
    m_sdHeader = {};
    m_soundData.clear();
}

const qm_G6_page_header& PicturesArea_g6::header_of(std::size_t page) const {
    if (page < GetTextPageNumber()) return m_6pHeader;
    const std::size_t picture = picture_of(page);
    return picture < m_shownPictures.size() ? m_pageHeaderList_G6[m_shownPictures[picture]] : m_6pHeader;
}

// Without speech one byte 0; else flag 1, the 16 bytes of the settings, text length u32, text.
void PicturesArea_g6::append_sound(ByteWriter& out) const {
    out.u8(m_enableSound);
    if (!m_enableSound) return;
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
    const std::vector<PageInFile> pages = pages_in_file();
    out.zeros(5).u16(static_cast<Ouint16>(pages.size()));
    for (const PageInFile& page : pages) {
        const CData& pixels = pixelDataList[page.index];
        qm_G6_page_header header = header_of(page.index);
        header.ValidLen = page.validLen;
        out.u32(26);
        header.append(out);
        out.u32(files.add_pixels(pixels.bytes())).u32(pixels.m_nDataLen);
    }
}

qm_G6_page_header page_header_of(const HVpageHeader_G6& header) {
    qm_G6_page_header page{common_fields(header)};
    page.CartoonFrameRate = header.CartoonFrameRate;
    return page;
}

qm_G5_page_header page_header_of(const HVpageHeader& header) { return common_fields(header); }
qm_G5_G6_fontData font_data_of(const HVpageHeader_G6& header) { return text_fields(header); }
qm_G5_G6_fontData font_data_of(const HVpageHeader& header) { return text_fields(header); }
qm_G5_G6_fontData font_data_of(const HVfontData& font) { return text_fields(font); }

} // namespace qm
