// The text and picture area: pages from laid-out text, then from picture files.
#pragma once

#include "program/HVarea.h"
#include "program/TextLayout.h"
#include "support/bytes.h"

namespace qm {

// The page header of generation 5; its four reserved bytes are zero.
struct qm_G5_page_header {
    Ouint8 PageStyle = 0, DisplayMode = 0, ClearMode = 0, Speed = 0;
    Ouint16 StayTime = 0;
    Ouint8 RepeatTime = 0;
    Ouint16 ValidLen = 0;
};

class PicturesArea : public HVarea {
  public:
    // Sets text, font and settings and lays the text out anew. fontName is a family name, fontPathName the
    // path of a font file.
    void AreaAddTxt(const char* str, const char* fontName, const qm_G5_G6_fontData& fontData,
                    const qm_G5_page_header& header);
    void fontPathToAreaAddTxt(const char* str, const char* fontPathName, const qm_G5_G6_fontData& fontData,
                              const qm_G5_page_header& header);
    // Adds a picture page; the file is read when the pages are prepared.
    void AreaAddPic(Ouint16 picID, const char* picPath, const qm_G5_page_header& header);

    void MoveArea() override { Reload(); }

    // Lays the text out for the area's rectangle.
    void Reload();
    // Draws every page and converts it for the screen settings, text pages first. False when a picture
    // could not be read: it is reported and has no page.
    bool PreparePageData();

    [[nodiscard]] std::size_t GetTextPageNumber() const { return m_text.pages.size(); }

    std::vector<CData> pixelDataList; // one a page
    int endPageLen = 0;               // valid width of the last text page

  protected:
    // The rectangle that is drawn on, in screen coordinates.
    void set_drawing_rectangle();

    qm_G5_page_header m_pHeader; // of the text pages
    qm_G5_G6_fontData m_pfontData;
    int m_AreaLeft = 0;

  private:
    struct Picture {
        Ouint16 id;
        std::string path;
        qm_G5_page_header header;
    };

    void set_text(const char* str, const qm_G5_G6_fontData& fontData, const qm_G5_page_header& header);
    void draw_text_page(Canvas32& canvas, const TextPage& page);
    [[nodiscard]] CData convert(Canvas32& canvas) const;

    std::string areaStr;
    std::shared_ptr<Font> m_font;
    TextPages m_text;
    std::vector<Picture> m_pictures;
};

} // namespace qm
