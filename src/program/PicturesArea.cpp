#include "program/PicturesArea.h"

#include "program/TextRepair.h"
#include "support/message.h"

#include <algorithm>

namespace qm {
namespace {

// A larger font fills no screen, but its glyphs fill the memory.
constexpr double kMaxFontPixels = 4096;

double pixels_of_points(Ouint16 points) {
    return std::min(HVarea::round(points * 4.0 / 3.0), kMaxFontPixels);
}

std::u16string ucs2_of(std::string_view utf8) {
    std::string text = repair_utf8(utf8);
    HVarea::UTF8ToUnicode(text);
    std::u16string units(text.size() / 2, u'\0');
    for (std::size_t i = 0; i < units.size(); ++i)
        units[i] = static_cast<char16_t>(static_cast<Ouint8>(text[2 * i]) |
                                         static_cast<Ouint8>(text[2 * i + 1]) << 8U);
    return units;
}

// Draws the picture at the top left of the canvas; false when it cannot be read.
bool draw_picture(Canvas32& canvas, const std::string& path) {
    const SurfacePtr picture(cairo_image_surface_create_from_png(path.c_str()));
    if (cairo_surface_status(picture.get()) != CAIRO_STATUS_SUCCESS) return false;
    canvas.clear();
    cairo_set_source_surface(canvas.context(), picture.get(), 0, 0);
    cairo_paint(canvas.context());
    return true;
}

} // namespace

void PicturesArea::AreaAddTxt(const char* str, const char* fontName, const qm_G5_G6_fontData& fontData,
                              const qm_G5_page_header& header) {
    _fontStyle = fontName;
    _fontPathName.clear();
    set_text(str, fontData, header);
}

void PicturesArea::fontPathToAreaAddTxt(const char* str, const char* fontPathName,
                                        const qm_G5_G6_fontData& fontData, const qm_G5_page_header& header) {
    _fontStyle.clear();
    _fontPathName = fontPathName;
    set_text(str, fontData, header);
}

void PicturesArea::set_text(const char* str, const qm_G5_G6_fontData& fontData,
                            const qm_G5_page_header& header) {
    areaStr = str;
    m_pfontData = fontData;
    m_pHeader = header;
    Reload();
}

void PicturesArea::AreaAddPic(Ouint16 picID, const char* picPath, const qm_G5_page_header& header) {
    set_drawing_rectangle();
    m_pictures.push_back({picID, picPath, header});
}

void PicturesArea::set_drawing_rectangle() {
    m_AreaLeft = m_aHeader.AreaX;
    m_AreaWidth = m_aHeader.AreaWidth;
    m_AreaHeight = m_aHeader.AreaHeight;
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
    if (m_AreaWidth <= 0 || m_AreaHeight <= 0) return;
    m_font = font_for({_fontStyle, _fontPathName, pixels_of_points(m_pfontData.fontSize),
                       m_pfontData.fontBold, m_pfontData.fontItalic});
    m_text = lay_out(ucs2_of(areaStr), *m_font, m_pfontData,
                     {m_AreaWidth, m_AreaHeight, running_of(m_pHeader.DisplayMode)});
    endPageLen = m_text.endPageLen;
}

bool PicturesArea::PreparePageData() {
    pixelDataList.clear();
    Canvas32 canvas(m_AreaWidth, m_AreaHeight);
    for (const TextPage& page : m_text.pages) {
        draw_text_page(canvas, page);
        pixelDataList.push_back(convert(canvas));
    }
    bool complete = true;
    for (const Picture& picture : m_pictures) {
        if (draw_picture(canvas, picture.path)) {
            pixelDataList.push_back(convert(canvas));
        } else {
            say("Error:The picture does not exist.ID:%d\n", picture.id);
            complete = false;
        }
    }
    return complete;
}

void PicturesArea::draw_text_page(Canvas32& canvas, const TextPage& page) {
    canvas.clear();
    cairo_t* c = canvas.context();
    cairo_save(c);
    cairo_rectangle(c, 0, 0, page.validWidth, m_AreaHeight);
    cairo_clip(c);
    set_cairoColor(c, m_pfontData.color);
    m_font->show(c, std::span(m_text.glyphs).subspan(page.first, page.count), page.dx);
    cairo_restore(c);
}

CData PicturesArea::convert(Canvas32& canvas) const {
    const PixelLayout layout = screen_settings().layout();
    CData data(static_cast<Ouint32>(pixel_data_size(m_AreaLeft, canvas.width(), canvas.height(), layout)));
    convert_pixels(canvas.pixels(), m_AreaLeft, canvas.width(), canvas.height(), layout, data.m_pData.get());
    return data;
}

} // namespace qm
