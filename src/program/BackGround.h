// The background of a generation-6 program: one colour, or pictures.
#pragma once

#include "program/PicturesArea_g6.h"

namespace qm {

class BackGround : public PicturesArea_g6 {
  public:
    static constexpr Ouint32 kNoColor = 0xEEFFEEFF;

    // Makes the background one colour; kNoColor shows the pictures again. The colour page has the area's own
    // page header, which no operation sets.
    void backGroundClolor(Ouint32 color);
    // The colour page, or a page for every picture.
    bool PreparePageData() override;

  private:
    Ouint32 _BGcolor = kNoColor;
};

} // namespace qm
