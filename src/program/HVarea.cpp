#include "program/HVarea.h"

#include "program/text/CairoFreeType.h"
#include "support/message.h"
#include "support/reason.h"

namespace qm {

void qm_G5_area_header::append(ByteWriter& out) const {
    out.u8(AreaType).u16(AreaX).u16(AreaY).u16(AreaWidth).u16(AreaHeight);
}

HVarea::HVarea() { CairoFreeType::InitFt(); }

void HVarea::set_drawing_rectangle() {
    m_AreaLeft = m_aHeader.AreaX + border();
    m_AreaWidth = m_aHeader.AreaWidth - 2 * border();
    m_AreaHeight = m_aHeader.AreaHeight - 2 * border();
}

bool HVarea::LoadAreaPage(int pageNum) {
    pngData.clear();
    if (pageNum < 0 || static_cast<std::size_t>(pageNum) >= page_count()) {
        say("Error:pageNum out of range.\n");
        (void)fail(QM_FAILED, "Argument pageNum is %d, and the area has %zu pages, counted from 0.", pageNum,
                   page_count());
        return false;
    }
    set_drawing_rectangle();
    if (has_room()) {
        Canvas32 canvas(m_AreaWidth, m_AreaHeight);
        if (!draw_page(canvas, static_cast<std::size_t>(pageNum))) return false;
        pngData = canvas.png();
    } else {
        (void)fail(QM_FAILED, "The area has no room for pages.");
    }
    if (!pngData.empty()) return true;
    say("Error:unable to generate pictures.\n");
    return false;
}

Oint8 HVarea::get_cairoFace(cairo_t* c, bool bold, bool italic) const {
    select_font(c, {_fontStyle, _fontPathName, 0, bold, italic});
    return 0;
}

void HVarea::TranCanvToInfo(const Ouint8* buffer, Ouint8* pInfoBuf, Ouint32& nInfoLen, Oint32 nLeft,
                            Oint32 nWidth, Oint32 nHeight, Oint32 nPx, Oint32 nPixelMode, Oint32 nMKStyle) {
    const PixelLayout layout{nPx, nPixelMode, nMKStyle, getAlignPixels(screen_settings().m_tranMode)};
    nInfoLen = static_cast<Ouint32>(convert_pixels(buffer, nLeft, nWidth, nHeight, layout, pInfoBuf));
}

} // namespace qm
