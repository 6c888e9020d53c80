// Live clocks in program areas, in both generations.
#include "program/TimeArea_g6.h"
#include "qm_sdk_dual/program_exports.h"

using namespace qm;

namespace {

constexpr char kClock[] = "clock";

// The program of each generation, by its kind of area.
template <class Area, class Operation>
int on_clock(Ouint16 areaID, const char* name, std::initializer_list<Needed> needed,
             const Operation& operation) {
    using Program = std::conditional_t<std::is_same_v<Area, TimeArea>, ProgramObj, ProgramObj_g6>;
    return with_area<Program, Area>(areaID, {name, kClock}, needed, operation);
}

template <class Area> int add_content(const char* name, Ouint16 areaID, const HVtimeAreaData_G56* timeData) {
    return on_clock<Area>(areaID, name,
                          {{"timeData", timeData}, {"fontName", timeData ? timeData->fontName : nullptr}},
                          [=](Area& area) { area.AddContent(*timeData); });
}

template <class Area>
int change_content(const char* name, Ouint16 areaID, const HVtimeAreaData_G56* timeData) {
    return on_clock<Area>(areaID, name, {{"timeData", timeData}},
                          [=](Area& area) { area.ChangeContent(*timeData); });
}

int set_clock(const char* name, Ouint16 areaID, const HVAnalogClockHeader_G56* header, E_ClockStyle cStyle,
              const ClockColor_G56* cColor) {
    return on_clock<TimeArea>(areaID, name, {{"header", header}, {"cColor", cColor}}, [=](TimeArea& area) {
        area.AddAnalogClock(narrowed(*header), cStyle, *cColor);
    });
}

int set_clock_g6(const char* name, Ouint16 areaID, const HVAnalogClockHeader_G56* header, E_ClockStyle cStyle,
                 const ClockColor_G56* cColor) {
    return on_clock<TimeArea_G6>(
        areaID, name, {{"header", header}, {"cColor", cColor}},
        [=](TimeArea_G6& area) { area.AddAnalogClock_G6(*header, cStyle, *cColor); });
}

template <class Area> int change_dial(const char* name, Ouint16 areaID, const char* picPath) {
    return on_clock<Area>(areaID, name, {{"picPath", picPath}},
                          [=](Area& area) { area.ChangeDialPic(picPath); });
}

template <class Area> int remove_dial(const char* name, Ouint16 areaID) {
    return on_clock<Area>(areaID, name, {}, [](Area& area) { area.RemoveDialPic(); });
}

} // namespace

int program_timeAreaAddContent(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return add_content<TimeArea>(__func__, areaID, timeData);
}

int program_timeAreaAddContent_G6(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return add_content<TimeArea_G6>(__func__, areaID, timeData);
}

int program_fontPath_timeAreaAddContent(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return add_content<TimeArea>(__func__, areaID, timeData);
}

int program_fontPath_timeAreaAddContent_G6(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return add_content<TimeArea_G6>(__func__, areaID, timeData);
}

int program_timeAreaChangeContent(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return change_content<TimeArea>(__func__, areaID, timeData);
}

int program_timeAreaChangeContent_G6(Ouint16 areaID, const HVtimeAreaData_G56* timeData) noexcept {
    return change_content<TimeArea_G6>(__func__, areaID, timeData);
}

int program_timeAreaSetBattleTime_G6(Ouint16 areaID, const HVTimeAreaBattle_G6* header) noexcept {
    return on_clock<TimeArea_G6>(areaID, __func__, {{"header", header}},
                                 [&](TimeArea_G6& area) { area.set_battle_time(*header); });
}

int program_timeAreaCancleBattleTime_G6(Ouint16 areaID) noexcept {
    return on_clock<TimeArea_G6>(areaID, __func__, {}, [](TimeArea_G6& area) { area.cancel_battle_time(); });
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
    return change_dial<TimeArea>(__func__, areaID, picPath);
}

int program_timeAreaChangeDialPic_G6(Ouint16 areaID, const char* picPath) noexcept {
    return change_dial<TimeArea_G6>(__func__, areaID, picPath);
}

int program_timeAreaChangeDialPicAdd_G56(Ouint16 areaID, const Ouint8* picAdd, Ouint32 picLen) noexcept {
    const Call call{__func__, kClock};
    return guarded({{"picAdd", picAdd}}, [&] {
        if (!in_range("picLen", picLen, 1, 0xFFFFFFFF)) return QM_FAILED + 0;
        return with_area<TimeArea>(areaID, call, {}, [=](TimeArea& area) {
            area.ChangeDialPicAdd({picAdd, picLen});
        });
    });
}

int program_timeAreaRemoveDialPic(Ouint16 areaID) noexcept { return remove_dial<TimeArea>(__func__, areaID); }

int program_timeAreaRemoveDialPic_G6(Ouint16 areaID) noexcept {
    return remove_dial<TimeArea_G6>(__func__, areaID);
}
