// The text and picture area: pages from laid-out text, then from picture files.
#pragma once

#include "program/HVarea.h"
#include "program/HVframe.h"
#include "program/text/TextLayout.h"

#include <functional>

namespace qm {

// The header of a page. Generation 6 writes 18 bytes; 5 the first nine of them and four zeros.
struct qm_G6_page_header {
    Ouint8 PageStyle = 0, DisplayMode = 0, ClearMode = 0, Speed = 0;
    Ouint16 StayTime = 0;
    Ouint8 RepeatTime = 0;
    Ouint16 ValidLen = 0;
    Ouint8 CartoonFrameRate = 0, BackNotValidFlag = 0;

    void append_g5(ByteWriter& out) const;
    void append_g6(ByteWriter& out) const;
};

// What the callers' records of both generations mean for the page header and for the text.
template <class Header> [[nodiscard]] qm_G6_page_header page_header_of(const Header& header) {
    qm_G6_page_header page{header.PageStyle,
                           header.DisplayMode,
                           header.ClearMode,
                           header.Speed,
                           header.StayTime,
                           header.RepeatTime,
                           header.ValidLen,
                           0,
                           0};
    if constexpr (requires { header.CartoonFrameRate; }) page.CartoonFrameRate = header.CartoonFrameRate;
    return page;
}
template <class Header> [[nodiscard]] qm_G5_G6_fontData font_data_of(const Header& header) {
    return {header.arrMode,    header.fontSize, header.color,  flag(header.fontBold), flag(header.fontItalic),
            header.tdirection, header.txtSpace, header.Halign, header.Valign};
}

// A page in the controller's pixels. Its ValidLen is set when it is written to a file.
struct Page {
    qm_G6_page_header header;
    CData pixels;
};

// The border of an area; 7 bytes.
struct _QM_5J_AREAFRAME {
    Ouint8 AreaFFlag = 1, AreaFDispStyle = 0, AreaFDispSpeed = 0, AreaFMoveStep = 0, AreaFWidth = 0;
    Ouint16 AreaFBackup = 0;
};

class PicturesArea : public HVarea {
  public:
    // Programs take the order of reading: their files hold the pages of text that runs to the right last page
    // first.
    explicit PicturesArea(PageOrder order = PageOrder::reading) : m_order(order) {}

    // Sets text, font and settings and lays the text out anew.
    void AreaAddTxt(const char* str, const char* fontName, const qm_G5_G6_fontData& fontData,
                    const qm_G6_page_header& header);
    // The same with the font kept.
    void AreaChangeTxt(const char* str, const qm_G5_G6_fontData& fontData, const qm_G6_page_header& header);
    // Adds a picture page; the file is read when the pages are prepared.
    void AreaAddPic(Ouint16 picID, const char* picPath, const qm_G6_page_header& header);

    // Puts a border around the area, whose text and pictures get what is left. Ignored when there is one.
    void AreaAddFrame(const _QM_5J_AREAFRAME& header, const char* picPath);
    void AreaRemoveFrame();

    // Lays the text out for the area's rectangle; the layout before stays when that fails.
    void MoveArea() override { Reload(); }
    void Reload();
    // Draws every page and converts it for the screen settings, text pages first. False when a picture
    // could not be read: it is reported and has no page.
    bool PreparePageData() override;
    void assemble(ProgramFiles& files) const override;

    // Text pages and pictures, those included that cannot be read.
    [[nodiscard]] std::size_t page_count() const override {
        return GetTextPageNumber() + (shows_pictures() ? m_pictures.size() : 0);
    }

    // Valid width of the page that ends the text.
    [[nodiscard]] int end_page_len() const { return m_layout.text.endPageLen; }

    std::vector<Page> pages; // as prepared

  protected:
    struct Picture {
        Ouint16 id;
        std::string path;
        qm_G6_page_header header;
    };
    // A page as a program file holds it.
    struct PageInFile {
        qm_G6_page_header header;
        Bytes pixels;
    };

    // The pages in the order of the file: text that runs to the right last page first.
    [[nodiscard]] std::vector<PageInFile> pages_in_file() const;
    void append_frame(ByteWriter& out) const;
    bool draw_page(Canvas32& canvas, std::size_t page) override;
    [[nodiscard]] int border() const override { return areaFrame ? areaFrame->frameHeight : 0; }
    // The pages that the area draws by itself; they come before the pictures, which it may hide.
    [[nodiscard]] virtual std::size_t GetTextPageNumber() const { return m_layout.text.pages.size(); }
    virtual void draw_own_page(Canvas32& canvas, std::size_t page);
    [[nodiscard]] virtual bool shows_pictures() const { return true; }

    qm_G6_page_header m_pHeader; // of the area's own pages
    qm_G5_G6_fontData m_pfontData;
    std::vector<Picture> m_pictures;

  private:
    // Where the text goes, in a font that its glyphs refer to.
    struct Layout {
        std::shared_ptr<Font> font;
        TextPages text;
    };

    void set_text(std::string text, FontNames font, qm_G5_G6_fontData fontData, qm_G6_page_header header);
    [[nodiscard]] Layout laid_out();
    // When the text cannot be laid out, the area is as it was before the change.
    void reload_or(const std::function<void()>& undo);
    // Adds a page of what is drawn.
    void add_page(Canvas32& canvas, const qm_G6_page_header& header) {
        pages.push_back({header, convert_canvas(canvas, m_AreaLeft)});
    }

    const PageOrder m_order;
    std::string areaStr;
    Layout m_layout;
    std::optional<HVframe> areaFrame;
    _QM_5J_AREAFRAME m_afHeader;
};

} // namespace qm
