#include "program/BackGround.h"

namespace qm {

void BackGround::backGroundClolor(Ouint32 color) {
    set_drawing_rectangle();
    _BGcolor = color;
}

void BackGround::draw_own_page(Canvas32& canvas, std::size_t) {
    set_cairoColor(canvas.context(), _BGcolor);
    cairo_paint(canvas.context());
}

} // namespace qm
