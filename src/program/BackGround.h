// The background of a generation-6 program: one colour, or pictures.
#pragma once

#include "program/PicturesArea_g6.h"

namespace qm {

class BackGround : public PicturesArea_g6 {
  public:
    static constexpr Ouint32 kNoColor = 0xEEFFEEFF;

    // Makes the background one colour; kNoColor shows the pictures again. The colour page has the area's own
    // page header, which no operation sets.
    void backGroundClolor(Ouint32 color) {
        set_drawing_rectangle();
        _BGcolor = color;
    }

    // The colour is a page, and hides the pictures. A background has no text.
    [[nodiscard]] std::size_t GetTextPageNumber() const override { return has_color() ? 1 : 0; }

  protected:
    void draw_own_page(Canvas32& canvas, std::size_t) override {
        set_cairoColor(canvas.context(), _BGcolor);
        cairo_paint(canvas.context());
    }
    [[nodiscard]] bool shows_pictures() const override { return !has_color(); }

  private:
    [[nodiscard]] bool has_color() const { return _BGcolor != kNoColor; }

    Ouint32 _BGcolor = kNoColor;
};

} // namespace qm
