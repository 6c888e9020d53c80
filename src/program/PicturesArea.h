// The text and picture area: pages from laid-out text, then from picture files.
#pragma once

#include "program/HVarea.h"
#include "program/HVframe.h"
#include "program/text/TextLayout.h"

#include <functional>

namespace qm {

// The page header of generation 5; its four reserved bytes are zero. 13 bytes.
struct qm_G5_page_header {
    Ouint8 PageStyle = 0, DisplayMode = 0, ClearMode = 0, Speed = 0;
    Ouint16 StayTime = 0;
    Ouint8 RepeatTime = 0;
    Ouint16 ValidLen = 0;

    // The nine bytes that both generations begin with.
    void append_common(ByteWriter& out) const;
};

// The border of an area; 7 bytes.
struct _QM_5J_AREAFRAME {
    Ouint8 AreaFFlag = 1, AreaFDispStyle = 0, AreaFDispSpeed = 0, AreaFMoveStep = 0, AreaFWidth = 0;
    Ouint16 AreaFBackup = 0;
};

class PicturesArea : public HVarea {
  public:
    // A program, whose file holds the pages of text that runs to the right last first, takes the order of
    // reading.
    explicit PicturesArea(PageOrder order = PageOrder::reading) : m_order(order) {}

    // Sets text, font and settings and lays the text out anew.
    void AreaAddTxt(const char* str, const char* fontName, const qm_G5_G6_fontData& fontData,
                    const qm_G5_page_header& header);
    // The same with the font kept.
    void AreaChangeTxt(const char* str, const qm_G5_G6_fontData& fontData, const qm_G5_page_header& header);
    // Adds a picture page; the file is read when the pages are prepared.
    void AreaAddPic(Ouint16 picID, const char* picPath, const qm_G5_page_header& header);

    // Puts a border around the area, whose text and pictures get what is left. Ignored when there is one.
    void AreaAddFrame(const _QM_5J_AREAFRAME& header, const char* picPath);
    void AreaRemoveFrame();

    void MoveArea() override { Reload(); }

    // Lays the text out for the area's rectangle.
    void Reload();
    // Draws every page and converts it for the screen settings, text pages first. False when a picture
    // could not be read: it is reported and has no page.
    bool PreparePageData() override;
    void assemble(ProgramFiles& files) const override;

    // Renders a page, from 0, as a PNG for a preview. The result is valid until the next one; false, after a
    // message, when there is no such page or its picture cannot be read.
    bool LoadAreaPage(int pageNum);
    [[nodiscard]] Bytes preview() const { return pngData; }
    [[nodiscard]] std::size_t page_count() const {
        return GetTextPageNumber() + (shows_pictures() ? m_pictures.size() : 0);
    }

    // Pages that the area draws by itself; they come before the pictures.
    [[nodiscard]] virtual std::size_t GetTextPageNumber() const { return m_text.pages.size(); }

    std::vector<CData> pixelDataList; // one a page
    int endPageLen = 0;               // valid width of the page that ends the text

  protected:
    struct Picture {
        Ouint16 id;
        std::string path;
        qm_G5_page_header header;
    };
    // A page in the order of the file.
    struct PageInFile {
        std::size_t index; // in pixelDataList
        Ouint16 validLen;
    };

    // The rectangle that is drawn on, in screen coordinates.
    void set_drawing_rectangle();
    [[nodiscard]] bool has_room() const { return m_AreaWidth > 0 && m_AreaHeight > 0; }
    // Pages in the order in which a program file holds them: text that runs to the right last page first.
    [[nodiscard]] std::vector<PageInFile> pages_in_file() const;
    // The position of a page's picture among those that could be read; for pages behind the text.
    [[nodiscard]] std::size_t picture_of(std::size_t page) const { return page - GetTextPageNumber(); }
    void append_frame(ByteWriter& out) const;
    // Draws one of the area's own pages on a black canvas.
    virtual void draw_own_page(Canvas32& canvas, std::size_t page);
    [[nodiscard]] virtual bool shows_pictures() const { return true; }

    qm_G5_page_header m_pHeader; // of the text pages
    qm_G5_G6_fontData m_pfontData;
    int m_AreaLeft = 0;
    std::vector<Picture> m_pictures;
    std::vector<std::size_t> m_shownPictures; // which of them have a page

  private:
    static constexpr std::size_t kMostPages = 0xFFFF; // that their number can say

    void set_text(std::string text, FontNames font, qm_G5_G6_fontData fontData, qm_G5_page_header header);
    // When the text cannot be laid out, for it has too many pages, the area is as it was before the change.
    void reload_or(const std::function<void()>& undo);
    // Adds a page of what is drawn.
    void add_page(Canvas32& canvas) { pixelDataList.push_back(convert_canvas(canvas, m_AreaLeft)); }
    // Adds a page for every picture that can be read.
    bool prepare_pictures(Canvas32& canvas);
    [[nodiscard]] const qm_G5_page_header& header_of(std::size_t page) const;

    const PageOrder m_order;
    std::string areaStr;
    std::shared_ptr<Font> m_font;
    TextPages m_text;
    std::optional<HVframe> areaFrame;
    _QM_5J_AREAFRAME m_afHeader;
    ByteBuffer pngData;
};

} // namespace qm
