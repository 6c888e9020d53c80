#include "program/TimeArea.h"

namespace qm {

// Area header 9; no border; kind 0 (digital); no units and no glyph sets.
void TimeArea::AssembleData(Frame& program) const {
    ByteWriter out(program);
    m_aHeader.append(out);
    out.zeros(4);
}

void qm_G6_area_header_p3::append(ByteWriter& out) const {
    out.u8(BackGroundFlag).u8(TimeMode).u16(BattleStartYear).u8(BattleStartMonth).u8(BattleStartDate);
    out.u8(BattleStartHour).u8(BattleStartMinute).u8(BattleStartSecond).u8(BattleStartWeek);
    out.u8(StartUpMode).u8(Transparency).u8(AreaEqual).zeros(14);
}

// Area header 9; no border; extended header 27; kind 0 (digital); no units and no glyph sets.
void TimeArea_G6::AssembleData_G6(ProgramFiles& files) const {
    ByteWriter out(files.program);
    m_aHeader.append(out);
    out.u8(0);
    m_aHeader_p3.append(out);
    out.zeros(3);
}

} // namespace qm
