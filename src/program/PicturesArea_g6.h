// The text and picture area of generation 6, with its longer page header.
#pragma once

#include "program/PicturesArea.h"

namespace qm {

// The page header of generation 6; its reserved bytes are zero.
struct qm_G6_page_header : qm_G5_page_header {
    Ouint8 CartoonFrameRate = 0;
    Ouint8 BackNotValidFlag = 0;
};

class PicturesArea_g6 : public PicturesArea {
  public:
    void AreaAddTxt(const char* str, const char* fontName, const qm_G5_G6_fontData& fontData,
                    const qm_G6_page_header& header);
    void fontPathToAreaAddTxt(const char* str, const char* fontPathName, const qm_G5_G6_fontData& fontData,
                              const qm_G6_page_header& header);
    void AreaAddPic(Ouint16 picID, const char* picPath, const qm_G6_page_header& header);

    qm_G6_page_header m_6pHeader;                       // of the text pages
    std::vector<qm_G6_page_header> m_pageHeaderList_G6; // of the picture pages, in the order added
};

// What the caller's record means for the page header and for the text.
[[nodiscard]] qm_G6_page_header page_header_of(const HVpageHeader_G6& header);
[[nodiscard]] qm_G5_G6_fontData font_data_of(const HVpageHeader_G6& header);

} // namespace qm
