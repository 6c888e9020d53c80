// The time area of generation 6: battle time, and clocks in full colour.
#pragma once

#include "program/PicturesArea_g6.h"
#include "program/TimeArea.h"

namespace qm {

// The extended area header of generation 6; 27 bytes, of which the last 14 are zero.
struct qm_G6_area_header_p3 {
    Ouint8 BackGroundFlag = 0, TimeMode = 0;
    HVTimeAreaBattle_G6 battle{};
    Ouint8 Transparency = 0, AreaEqual = 0;

    void append(ByteWriter& out) const;
};

class TimeArea_G6 : public TimeArea {
  public:
    // Converts the hands' colours for the screen settings of this moment.
    void AddAnalogClock_G6(const HVAnalogClockHeader_G56& header, E_ClockStyle style,
                           const ClockColor_G56& color);
    void set_battle_time(const HVTimeAreaBattle_G6& header);
    void cancel_battle_time();

    void assemble(ProgramFiles& files) const override;

    qm_G6_area_header_p3 m_aHeader_p3;

  protected:
    [[nodiscard]] std::pair<int, int> pivot() const override {
        return {int{m_header.OrignPointX}, int{m_header.OrignPointY}}; // packed: no references
    }

  private:
    HVAnalogClockHeader_G56 m_header{};
    ByteBuffer m_clockSetting; // 14, 17 or 23 bytes; empty for a clock that got a dial picture only
};

} // namespace qm
