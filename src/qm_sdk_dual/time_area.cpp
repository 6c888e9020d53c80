// Live clocks in program areas, in both generations.
#include "program/TimeArea_g6.h"
#include "qm_sdk_dual/program_exports.h"

using namespace qm;

namespace {

constexpr char kClock[] = "clock";

template <class Operation>
int on_g5(Ouint16 areaID, const char* name, std::initializer_list<Needed> needed, Operation&& operation) {
    return with_program_g5(needed, [&](ProgramObj& program) {
        return with_area<TimeArea>(program, areaID, {name, kClock}, [&](TimeArea& area) {
            operation(area);
            return QM_OK;
        });
    });
}

template <class Operation>
int on_g6(Ouint16 areaID, const char* name, std::initializer_list<Needed> needed, Operation&& operation) {
    return with_program_g6(needed, [&](ProgramObj_g6& program) {
        return with_area<TimeArea_G6>(program, areaID, {name, kClock}, [&](TimeArea_G6& area) {
            operation(area);
            return QM_OK;
        });
    });
}

const void* font_of(const HVtimeAreaData_G56* timeData) { return timeData ? timeData->fontName : nullptr; }

int add_content(const char* name, Ouint16 areaID, const HVtimeAreaData_G56* timeData) {
    return on_g5(areaID, name, {{"timeData", timeData}, {"fontName", font_of(timeData)}},
                 [&](TimeArea& area) { area.AddContent(*timeData); });
}

int add_content_g6(const char* name, Ouint16 areaID, const HVtimeAreaData_G56* timeData) {
    return on_g6(areaID, name, {{"timeData", timeData}, {"fontName", font_of(timeData)}},
                 [&](TimeArea& area) { area.AddContent(*timeData); });
}

int set_clock(const char* name, Ouint16 areaID, const HVAnalogClockHeader_G56* header, E_ClockStyle cStyle,
              const ClockColor_G56* cColor) {
    return on_g5(areaID, name, {{"header", header}, {"cColor", cColor}},
                 [&](TimeArea& area) { area.AddAnalogClock(narrowed(*header), cStyle, *cColor); });
}

int set_clock_g6(const char* name, Ouint16 areaID, const HVAnalogClockHeader_G56* header, E_ClockStyle cStyle,
                 const ClockColor_G56* cColor) {
    return on_g6(areaID, name, {{"header", header}, {"cColor", cColor}},
                 [&](TimeArea_G6& area) { area.AddAnalogClock_G6(*header, cStyle, *cColor); });
}

} // namespace

int program_timeAreaAddContent(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return add_content(__func__, areaID, timeData);
}

int program_timeAreaAddContent_G6(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return add_content_g6(__func__, areaID, timeData);
}

int program_fontPath_timeAreaAddContent(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return add_content(__func__, areaID, timeData);
}

int program_fontPath_timeAreaAddContent_G6(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return add_content_g6(__func__, areaID, timeData);
}

int program_timeAreaChangeContent(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return on_g5(areaID, __func__, {{"timeData", timeData}},
                 [&](TimeArea& area) { area.ChangeContent(*timeData); });
}

int program_timeAreaChangeContent_G6(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return on_g6(areaID, __func__, {{"timeData", timeData}},
                 [&](TimeArea& area) { area.ChangeContent(*timeData); });
}

int program_timeAreaSetBattleTime_G6(Ouint16 areaID, const HVTimeAreaBattle_G6* header) noexcept {
    return on_g6(areaID, __func__, {{"header", header}},
                 [&](TimeArea_G6& area) { area.set_battle_time(*header); });
}

int program_timeAreaCancleBattleTime_G6(Ouint16 areaID) noexcept {
    return on_g6(areaID, __func__, {}, [](TimeArea_G6& area) { area.cancel_battle_time(); });
}

int program_timeAreaAddAnalogClock(Ouint16 areaID, const HVAnalogClockHeader_G56* header, E_ClockStyle cStyle,
                                   const ClockColor_G56* cColor) noexcept {
    return set_clock(__func__, areaID, header, cStyle, cColor);
}

int program_timeAreaChangeAnalogClock(Ouint16 areaID, const HVAnalogClockHeader_G56* header,
                                      E_ClockStyle cStyle, const ClockColor_G56* cColor) noexcept {
    return set_clock(__func__, areaID, header, cStyle, cColor);
}

int program_timeAreaAddAnalogClock_G6(Ouint16 areaID, const HVAnalogClockHeader_G56* header,
                                      E_ClockStyle cStyle, const ClockColor_G56* cColor) noexcept {
    return set_clock_g6(__func__, areaID, header, cStyle, cColor);
}

int program_timeAreaChangeAnalogClock_G6(Ouint16 areaID, const HVAnalogClockHeader_G56* header,
                                         E_ClockStyle cStyle, const ClockColor_G56* cColor) noexcept {
    return set_clock_g6(__func__, areaID, header, cStyle, cColor);
}

int program_timeAreaChangeDialPic(Ouint16 areaID, const char* picPath) noexcept {
    return on_g5(areaID, __func__, {{"picPath", picPath}},
                 [&](TimeArea& area) { area.ChangeDialPic(picPath); });
}

int program_timeAreaChangeDialPic_G6(Ouint16 areaID, const char* picPath) noexcept {
    return on_g6(areaID, __func__, {{"picPath", picPath}},
                 [&](TimeArea& area) { area.ChangeDialPic(picPath); });
}

int program_timeAreaChangeDialPicAdd_G56(Ouint16 areaID, const Ouint8* picAdd, Ouint32 picLen) noexcept {
    const Call call{__func__, kClock};
    return guarded({{"picAdd", picAdd}}, [&] {
        if (!in_range("picLen", picLen, 1, 0xFFFFFFFF)) return QM_FAILED + 0;
        return with_area<TimeArea>(areaID, call, {}, [&](TimeArea& area) {
            area.ChangeDialPicAdd({picAdd, picLen});
            return QM_OK;
        });
    });
}

int program_timeAreaRemoveDialPic(Ouint16 areaID) noexcept {
    return on_g5(areaID, __func__, {}, [](TimeArea& area) { area.RemoveDialPic(); });
}

int program_timeAreaRemoveDialPic_G6(Ouint16 areaID) noexcept {
    return on_g6(areaID, __func__, {}, [](TimeArea& area) { area.RemoveDialPic(); });
}
