#include "program/PicturesArea.h"

#include "program/text/encoding.h"
#include "support/message.h"

#include <algorithm>
#include <stdexcept>

namespace qm {
namespace {

// What both generations begin with, 9 bytes.
ByteWriter& append_common(ByteWriter& out, const qm_G6_page_header& h) {
    out.u8(h.PageStyle).u8(h.DisplayMode).u8(h.ClearMode).u8(h.Speed).u16(h.StayTime).u8(h.RepeatTime);
    return out.u16(h.ValidLen);
}

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
                              const qm_G6_page_header& header) {
    set_text(str, font_names(fontName), fontData, header);
}

void PicturesArea::AreaChangeTxt(const char* str, const qm_G5_G6_fontData& fontData,
                                 const qm_G6_page_header& header) {
    set_text(str, {_fontStyle, _fontPathName}, fontData, header);
}

void PicturesArea::set_text(std::string text, FontNames font, qm_G5_G6_fontData fontData,
                            qm_G6_page_header header) {
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

void PicturesArea::AreaAddPic(Ouint16 picID, const char* picPath, const qm_G6_page_header& header) {
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
        throw;
    }
}

void PicturesArea::Reload() {
    set_drawing_rectangle();
    Layout fresh = laid_out();
    std::swap(m_layout, fresh);
    if (page_count() <= kMostPages) return;
    std::swap(m_layout, fresh);
    throw std::length_error("too many pages");
}

PicturesArea::Layout PicturesArea::laid_out() {
    if (m_pfontData.arrMode != SINGLELINE && m_pfontData.arrMode != MULTILINE) {
        say("Error: no arrMode is specified.Use MULTILINE Mode\n");
        m_pfontData.arrMode = MULTILINE;
    }
    if (areaStr.empty()) {
        say("Error:no string has been added.\n");
        return {};
    }
    if (!has_room()) return {};
    const std::shared_ptr<Font> font =
        font_for({_fontStyle, _fontPathName, std::min(pixels_of_points(m_pfontData.fontSize), kMaxFontPixels),
                  m_pfontData.fontBold, m_pfontData.fontItalic});
    return {font, lay_out(utf32_of(areaStr), *font, m_pfontData,
                          {m_AreaWidth, m_AreaHeight, running_of(m_pHeader.DisplayMode), m_order})};
}

bool PicturesArea::PreparePageData() {
    pages.clear();
    set_drawing_rectangle();
    if (!has_room()) return page_count() == GetTextPageNumber();
    Canvas32 canvas(m_AreaWidth, m_AreaHeight);
    for (std::size_t i = 0; i < GetTextPageNumber(); ++i) {
        canvas.clear();
        draw_own_page(canvas, i);
        add_page(canvas, m_pHeader);
    }
    if (!shows_pictures()) return true;
    for (const Picture& picture : m_pictures)
        if (draw_picture(canvas, picture.path))
            add_page(canvas, picture.header);
        else
            say("Error:The picture does not exist.ID:%d\n", picture.id);
    return pages.size() == page_count();
}

bool PicturesArea::draw_page(Canvas32& canvas, std::size_t page) {
    if (page < GetTextPageNumber()) {
        draw_own_page(canvas, page);
        return true;
    }
    if (draw_picture(canvas, m_pictures[page - GetTextPageNumber()].path)) return true;
    say(page + 1 == page_count() ? "Error:The last picture is not exist.\n"
                                 : "Error:The picture is not exist.\n");
    return false;
}

void PicturesArea::draw_own_page(Canvas32& canvas, std::size_t number) {
    const TextPage& page = m_layout.text.pages[number];
    cairo_t* c = canvas.context();
    cairo_save(c);
    cairo_rectangle(c, 0, 0, page.validWidth, m_AreaHeight);
    cairo_clip(c);
    set_cairoColor(c, m_pfontData.color);
    m_layout.font->show(c, std::span(m_layout.text.glyphs).subspan(page.first, page.count), page.dx);
    cairo_restore(c);
}

void qm_G6_page_header::append_g5(ByteWriter& out) const { append_common(out, *this).zeros(4); }

void qm_G6_page_header::append_g6(ByteWriter& out) const {
    append_common(out, *this).u8(0).u8(CartoonFrameRate).zeros(6).u8(BackNotValidFlag);
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
    const bool lastFirst = running_of(m_pHeader.DisplayMode) == Running::right;
    const bool partial = lastFirst || m_pHeader.DisplayMode == 4;
    std::vector<PageInFile> inFile;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        const Page& page = pages[i < texts && lastFirst ? texts - 1 - i : i];
        inFile.push_back({page.header, page.pixels.bytes()});
        inFile.back().header.ValidLen =
            static_cast<Ouint16>(partial && i + 1 == texts ? end_page_len() : m_AreaWidth);
    }
    return inFile;
}

// Area header 9; border; page count u16; for each page: length u32 of what follows, page header 13, pixels.
void PicturesArea::assemble(ProgramFiles& files) const {
    ByteWriter out(files.program);
    m_aHeader.append(out);
    append_frame(out);
    out.u16(static_cast<Ouint16>(pages.size()));
    for (const PageInFile& page : pages_in_file()) {
        out.u32(CData::length_of(page.pixels) + 13);
        page.header.append_g5(out);
        out.bytes(page.pixels);
    }
}

} // namespace qm
