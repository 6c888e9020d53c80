// An area that shows the controller's own clock.
#pragma once

#include "program/HVarea.h"

namespace qm {

class TimeArea : public HVarea {
  public:
    void AssembleData(Frame& program) const override;
};

// The extended area header of generation 6; 27 bytes, of which the last 14 are zero.
struct qm_G6_area_header_p3 {
    Ouint8 BackGroundFlag = 0, TimeMode = 0;
    Ouint16 BattleStartYear = 0;
    Ouint8 BattleStartMonth = 0, BattleStartDate = 0, BattleStartHour = 0, BattleStartMinute = 0;
    Ouint8 BattleStartSecond = 0, BattleStartWeek = 0, StartUpMode = 0, Transparency = 0, AreaEqual = 0;

    void append(ByteWriter& out) const;
};

class TimeArea_G6 : public TimeArea {
  public:
    void AssembleData_G6(ProgramFiles& files) const override;

    qm_G6_area_header_p3 m_aHeader_p3;
};

} // namespace qm
