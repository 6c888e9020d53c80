#include "program/TimeArea_g6.h"

namespace qm {
namespace {

// The caller's record with colours of 16 or 32 bits; 17 or 23 bytes.
template <class AppendColor>
void append_setting(ByteWriter& out, const HVAnalogClockHeader_G56& h, AppendColor&& color) {
    out.u16(h.OrignPointX).u16(h.OrignPointY).u8(h.UnitMode);
    color(out.u8(h.HourHandWidth).u8(h.HourHandLen), h.HourHandColor);
    color(out.u8(h.MinHandWidth).u8(h.MinHandLen), h.MinHandColor);
    color(out.u8(h.SecHandWidth).u8(h.SecHandLen), h.SecHandColor);
}

ByteBuffer clock_setting(const HVAnalogClockHeader_G56& header) {
    ByteBuffer setting;
    ByteWriter out(setting);
    const ScreenSettings& screen = screen_settings();
    if (screen.m_screenColor != SCREEN_COLOR_FULLCOLOR)
        narrowed(header).append(out);
    else if (screen.m_tranMode == Tran_Pixel_Mode5)
        append_setting(out, header,
                       [](ByteWriter& to, Ouint32 color) { to.u32(TimeArea::get_vemarColor(color)); });
    else
        append_setting(out, header,
                       [](ByteWriter& to, Ouint32 color) { to.u16(TimeArea::get_vemarColor(color)); });
    return setting;
}

} // namespace

void qm_G6_area_header_p3::append(ByteWriter& out) const {
    out.u8(BackGroundFlag).u8(TimeMode).u16(battle.BattleStartYear);
    out.u8(battle.BattleStartMonth).u8(battle.BattleStartDate).u8(battle.BattleStartHour);
    out.u8(battle.BattleStartMinute).u8(battle.BattleStartSecond).u8(battle.BattleStartWeek);
    out.u8(battle.StartUpMode).u8(Transparency).u8(AreaEqual).zeros(14);
}

void TimeArea_G6::AddAnalogClock_G6(const HVAnalogClockHeader_G56& header, E_ClockStyle style,
                                    const ClockColor_G56& color) {
    m_clockSetting = clock_setting(header);
    m_header = header;
    set_clock(style, color);
}

void TimeArea_G6::set_battle_time(const HVTimeAreaBattle_G6& header) {
    m_aHeader_p3.TimeMode = 1;
    m_aHeader_p3.battle = header;
}

void TimeArea_G6::cancel_battle_time() {
    m_aHeader_p3.TimeMode = 0;
    m_aHeader_p3.battle = {};
}

// Area header 9; no border; header part three 27; no speech; zero 5; page count 1 as u16; the page's record
// as in other areas: 26 as u32, page header 18, position in the data file u32, length u32. Then of a digital
// clock what append_digital says, positions counted in the data file; of an analog one kind 1, unit count 1,
// no glyph sets, length of the setting u8, the setting, style u8, zero 1.
void TimeArea_G6::assemble(ProgramFiles& files) const {
    constexpr unsigned kPageRecord = 26;
    ByteWriter out(files.program);
    m_aHeader.append(out);
    out.u8(0);
    m_aHeader_p3.append(out);
    out.zeros(6).u16(1).u32(kPageRecord);
    qm_G6_page_header pageHeader;
    pageHeader.ValidLen = m_aHeader.AreaWidth;
    pageHeader.append_g6(out);
    out.u32(files.add_pixels(page())).u32(CData::length_of(page()));
    if (!m_analogClock) return append_digital(out, files.add_pixels(glyphs()));
    const ByteBuffer setting = m_clockSetting.empty() ? clock_setting(m_header) : m_clockSetting;
    out.u8(kAnalog).u8(1).u8(0).u8(static_cast<unsigned>(setting.size())).bytes(setting);
    out.u8(m_clockStyle).u8(0);
}

} // namespace qm
