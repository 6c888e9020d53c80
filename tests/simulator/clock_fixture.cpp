#include "clock_fixture.h"

namespace qm::sim::test {

void ClockProgram::begin(const ClockScreen& screen, Rect rect) {
    program_deleteProgram();
    program_setScreenParams_G56(static_cast<E_ScreenColor_G56>(screen.color), screen.type,
                                DOUBLE_COLOR_PIXTYPE_1);
    const auto u16 = [](int value) { return static_cast<Ouint16>(value); };
    const HVprogramHeader five = lib::program_header(1);
    const HVprogramHeader_G6 six = lib::program_header_g6(1);
    const HVareaHeader area5 =
        lib::area_header(eTimeClockArea, u16(rect.x), u16(rect.y), u16(rect.width), u16(rect.height));
    const HVareaHeader_G6 area6 =
        lib::area_header_g6(eTimeClockArea, u16(rect.x), u16(rect.y), u16(rect.width), u16(rect.height));
    EXPECT_EQ(screen.six ? program_addProgram_G6(&six) : program_addProgram(&five), 0);
    EXPECT_EQ(screen.six ? program_addArea_G6(kClockArea, &area6) : program_AddArea(kClockArea, &area5), 0);
}

int ClockProgram::add(const ClockScreen& screen, const HVtimeAreaData_G56& content) {
    return screen.six ? program_timeAreaAddContent_G6(kClockArea, &content)
                      : program_timeAreaAddContent(kClockArea, &content);
}

int ClockProgram::add(const ClockScreen& screen, const HVAnalogClockHeader_G56& clock, E_ClockStyle style,
                      const ClockColor_G56& colors) {
    return screen.six ? program_timeAreaAddAnalogClock_G6(kClockArea, &clock, style, &colors)
                      : program_timeAreaAddAnalogClock(kClockArea, &clock, style, &colors);
}

sim::Program ClockProgram::parsed(const ClockScreen& screen) {
    const File file = screen.six ? integrate_g6() : integrate_g5();
    sim::ParsedProgram program = screen.six ? parse_program(file.bytes, file.data, screen.format())
                                            : parse_program(file.bytes, screen.format());
    if (const auto* error = std::get_if<std::string>(&program)) {
        ADD_FAILURE() << *error;
        return {};
    }
    return std::get<sim::Program>(std::move(program));
}

std::unique_ptr<ProgramPlayer> ClockProgram::played(const ClockScreen& screen, int width, int height) {
    return std::make_unique<ProgramPlayer>(parsed(screen), width, height, screen.format());
}

} // namespace qm::sim::test
