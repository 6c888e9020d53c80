#include "program/PicturesArea.h"

#include "program/text/encoding.h"
#include "support/message.h"

#include <algorithm>
#include <stdexcept>

namespace qm {
namespace {

// Draws the picture at the top left of the canvas; false when it cannot be read.
bool draw_picture(Canvas32& canvas, const std::string& path) {
    const SurfacePtr picture = load_picture(path);
    if (!picture) return false;
    canvas.clear();
    cairo_set_source_surface(canvas.context(), picture.get(), 0, 0);
    cairo_paint(canvas.context());
    return true;
}

} // namespace

void PicturesArea::AreaAddTxt(const char* str, const char* fontName, const qm_G5_G6_fontData& fontData,
                              const qm_G5_page_header& header) {
    set_text(str, font_names(fontName), fontData, header);
}

void PicturesArea::AreaChangeTxt(const char* str, const qm_G5_G6_fontData& fontData,
                                 const qm_G5_page_header& header) {
    set_text(str, {_fontStyle, _fontPathName}, fontData, header);
}

void PicturesArea::set_text(std::string text, FontNames font, qm_G5_G6_fontData fontData,
                            qm_G5_page_header header) {
    const auto exchange = [&] {
        areaStr.swap(text);
        _fontStyle.swap(font.family);
        _fontPathName.swap(font.path);
        std::swap(m_pfontData, fontData);
        std::swap(m_pHeader, header);
    };
    exchange();
    reload_or(exchange);
}

void PicturesArea::AreaAddPic(Ouint16 picID, const char* picPath, const qm_G5_page_header& header) {
    if (page_count() >= kMostPages) throw std::length_error("too many pages");
    set_drawing_rectangle();
    m_pictures.push_back({picID, picPath, header});
}

void PicturesArea::AreaAddFrame(const _QM_5J_AREAFRAME& header, const char* picPath) {
    if (areaFrame) return;
    areaFrame = HVframe::load(picPath);
    if (!areaFrame) return;
    m_afHeader = header;
    reload_or([&] { areaFrame.reset(); });
}

void PicturesArea::AreaRemoveFrame() {
    if (!areaFrame) return;
    std::optional<HVframe> removed;
    areaFrame.swap(removed);
    reload_or([&] { areaFrame.swap(removed); });
}

void PicturesArea::reload_or(const std::function<void()>& undo) {
    try {
        Reload();
    } catch (...) {
        undo();
        Reload();
        throw;
    }
}

void PicturesArea::set_drawing_rectangle() {
    const int border = areaFrame ? areaFrame->frameHeight : 0;
    m_AreaLeft = m_aHeader.AreaX + border;
    m_AreaWidth = m_aHeader.AreaWidth - 2 * border;
    m_AreaHeight = m_aHeader.AreaHeight - 2 * border;
}

void PicturesArea::Reload() {
    set_drawing_rectangle();
    m_text = {};
    endPageLen = 0;
    if (m_pfontData.arrMode != SINGLELINE && m_pfontData.arrMode != MULTILINE) {
        say("Error: no arrMode is specified.Use MULTILINE Mode\n");
        m_pfontData.arrMode = MULTILINE;
    }
    if (areaStr.empty()) {
        say("Error:no string has been added.\n");
        return;
    }
    if (!has_room()) return;
    m_font =
        font_for({_fontStyle, _fontPathName, std::min(pixels_of_points(m_pfontData.fontSize), kMaxFontPixels),
                  m_pfontData.fontBold, m_pfontData.fontItalic});
    m_text = lay_out(ucs2_of(areaStr), *m_font, m_pfontData,
                     {m_AreaWidth, m_AreaHeight, running_of(m_pHeader.DisplayMode), m_order});
    endPageLen = m_text.endPageLen;
    if (page_count() > kMostPages) throw std::length_error("too many pages");
}

bool PicturesArea::PreparePageData() {
    pixelDataList.clear();
    m_shownPictures.clear();
    set_drawing_rectangle();
    if (!has_room()) return page_count() == GetTextPageNumber();
    Canvas32 canvas(m_AreaWidth, m_AreaHeight);
    for (std::size_t i = 0; i < GetTextPageNumber(); ++i) {
        canvas.clear();
        draw_own_page(canvas, i);
        add_page(canvas);
    }
    return !shows_pictures() || prepare_pictures(canvas);
}

bool PicturesArea::prepare_pictures(Canvas32& canvas) {
    for (std::size_t i = 0; i < m_pictures.size(); ++i) {
        if (draw_picture(canvas, m_pictures[i].path)) {
            add_page(canvas);
            m_shownPictures.push_back(i);
        } else {
            say("Error:The picture does not exist.ID:%d\n", m_pictures[i].id);
        }
    }
    return m_shownPictures.size() == m_pictures.size();
}

void PicturesArea::draw_own_page(Canvas32& canvas, std::size_t number) {
    const TextPage& page = m_text.pages[number];
    cairo_t* c = canvas.context();
    cairo_save(c);
    cairo_rectangle(c, 0, 0, page.validWidth, m_AreaHeight);
    cairo_clip(c);
    set_cairoColor(c, m_pfontData.color);
    m_font->show(c, std::span(m_text.glyphs).subspan(page.first, page.count), page.dx);
    cairo_restore(c);
}

void qm_G5_page_header::append_common(ByteWriter& out) const {
    out.u8(PageStyle).u8(DisplayMode).u8(ClearMode).u8(Speed).u16(StayTime).u8(RepeatTime).u16(ValidLen);
}

void PicturesArea::append_frame(ByteWriter& out) const {
    if (!areaFrame) {
        out.u8(0);
        return;
    }
    out.u8(m_afHeader.AreaFFlag).u8(m_afHeader.AreaFDispStyle).u8(m_afHeader.AreaFDispSpeed);
    out.u8(m_afHeader.AreaFMoveStep).u8(m_afHeader.AreaFWidth).u16(m_afHeader.AreaFBackup);
    out.bytes(areaFrame->pixels.bytes());
}

std::vector<PicturesArea::PageInFile> PicturesArea::pages_in_file() const {
    const std::size_t texts = GetTextPageNumber();
    const Ouint8 mode = m_pHeader.DisplayMode;
    const bool lastFirst = running_of(mode) == Running::right;
    const bool partial = lastFirst || mode == 4;
    std::vector<PageInFile> pages;
    for (std::size_t i = 0; i < pixelDataList.size(); ++i) {
        const std::size_t index = i < texts && lastFirst ? texts - 1 - i : i;
        const bool ends = partial && i + 1 == texts;
        pages.push_back({index, static_cast<Ouint16>(ends ? endPageLen : m_AreaWidth)});
    }
    return pages;
}

const qm_G5_page_header& PicturesArea::header_of(std::size_t page) const {
    if (page < GetTextPageNumber()) return m_pHeader;
    return m_pictures[m_shownPictures[picture_of(page)]].header;
}

// Area header 9; border; page count u16; for each page: length u32 of what follows, page header 13, pixels.
void PicturesArea::assemble(ProgramFiles& files) const {
    ByteWriter out(files.program);
    m_aHeader.append(out);
    append_frame(out);
    const std::vector<PageInFile> pages = pages_in_file();
    out.u16(static_cast<Ouint16>(pages.size()));
    for (const PageInFile& page : pages) {
        const CData& pixels = pixelDataList[page.index];
        qm_G5_page_header header = header_of(page.index);
        header.ValidLen = page.validLen;
        out.u32(pixels.m_nDataLen + 13);
        header.append_common(out);
        out.zeros(4).bytes(pixels.bytes());
    }
}

bool PicturesArea::LoadAreaPage(int pageNum) {
    pngData.clear();
    const auto page = static_cast<std::size_t>(pageNum);
    if (pageNum < 0 || page >= page_count()) return no_such_page(pageNum, page_count());
    set_drawing_rectangle();
    if (!has_room()) return no_room_for_pages();
    Canvas32 canvas(m_AreaWidth, m_AreaHeight);
    if (page < GetTextPageNumber()) {
        draw_own_page(canvas, page);
    } else if (!draw_picture(canvas, m_pictures[picture_of(page)].path)) {
        say(page + 1 == page_count() ? "Error:The last picture is not exist.\n"
                                     : "Error:The picture is not exist.\n");
        return false;
    }
    pngData = canvas.png();
    if (!pngData.empty()) return true;
    say("Error:unable to generate pictures.\n");
    return false;
}

} // namespace qm
