// An area that shows the controller's own clock.
#pragma once

#include "program/HVarea.h"

namespace qm {

class TimeArea : public HVarea {
  public:
    void AssembleData(Frame& program) const override;
};

} // namespace qm
