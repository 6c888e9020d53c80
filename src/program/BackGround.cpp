#include "program/BackGround.h"

namespace qm {

void BackGround::backGroundClolor(Ouint32 color) {
    set_drawing_rectangle();
    m_pHeader = m_6pHeader;
    _BGcolor = color;
}

bool BackGround::PreparePageData() {
    pixelDataList.clear();
    m_shownPictures.clear();
    set_drawing_rectangle();
    if (!has_room()) return true;
    Canvas32 canvas(m_AreaWidth, m_AreaHeight);
    if (_BGcolor == kNoColor) return prepare_pictures(canvas);
    set_cairoColor(canvas.context(), _BGcolor);
    cairo_paint(canvas.context());
    add_page(canvas);
    return true;
}

} // namespace qm
