#include "program/PicturesArea_g6.h"

namespace qm {

void PicturesArea_g6::AreaAddTxt(const char* str, const char* fontName, const qm_G5_G6_fontData& fontData,
                                 const qm_G6_page_header& header) {
    m_6pHeader = header;
    PicturesArea::AreaAddTxt(str, fontName, fontData, header);
}

void PicturesArea_g6::fontPathToAreaAddTxt(const char* str, const char* fontPathName,
                                           const qm_G5_G6_fontData& fontData,
                                           const qm_G6_page_header& header) {
    m_6pHeader = header;
    PicturesArea::fontPathToAreaAddTxt(str, fontPathName, fontData, header);
}

void PicturesArea_g6::AreaAddPic(Ouint16 picID, const char* picPath, const qm_G6_page_header& header) {
    m_pageHeaderList_G6.push_back(header);
    PicturesArea::AreaAddPic(picID, picPath, header);
}

qm_G6_page_header page_header_of(const HVpageHeader_G6& header) {
    qm_G6_page_header page;
    page.PageStyle = header.PageStyle;
    page.DisplayMode = header.DisplayMode;
    page.ClearMode = header.ClearMode;
    page.Speed = header.Speed;
    page.StayTime = header.StayTime;
    page.RepeatTime = header.RepeatTime;
    page.ValidLen = header.ValidLen;
    page.CartoonFrameRate = header.CartoonFrameRate;
    return page;
}

qm_G5_G6_fontData font_data_of(const HVpageHeader_G6& header) {
    return {header.arrMode,    header.fontSize, header.color,  header.fontBold, header.fontItalic,
            header.tdirection, header.txtSpace, header.Halign, header.Valign};
}

} // namespace qm
