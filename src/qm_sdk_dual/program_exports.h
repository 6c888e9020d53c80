// What the program_ exports are made with.
#pragma once

#include "program/ProgramSlot.h"
#include "qm_sdk_dual/exports.h"
#include "support/message.h"

namespace qm {

// The call is for one generation, and the program in the slot of the other; -1.
int of_other_generation(int asked);

// Runs an operation on the caller's program of one generation, a ProgramObj or a ProgramObj_g6, under the
// renderer's lock; -1 when the slot holds a program of the other generation.
template <class Program, class Operation> int on_program(const Operation& operation) {
    const ProgramAccess access = ProgramAccess::acquire<Program>();
    const auto renderer = lock_renderer();
    auto* const program = access.of_generation<Program>();
    return program ? status_of(operation, *program)
                   : of_other_generation(std::is_same_v<Program, ProgramObj> ? 5 : 6);
}

// The same as the whole of an export that needs these arguments.
template <class Program, class Operation>
int with_program(std::initializer_list<Needed> needed, const Operation& operation) noexcept {
    return guarded(needed, [&] { return on_program<Program>(operation); });
}

// An export, and what it is about, as messages name them.
struct Call {
    const char* name;
    const char* content;
};

// Both print a message and give -1: there is no area of that number, or it is of a kind that has no such
// content.
int no_such_area(const Call& call, Ouint16 areaID);
int takes_no_such_content(const Call& call, Ouint16 areaID);

// Runs an operation on an area of a program, when there is one of that number and kind.
template <class Area, class Operation>
int with_area(const ProgramObj& program, Ouint16 areaID, const Call& call, const Operation& operation) {
    HVarea* const area = program.getArea(areaID);
    if (!area) return no_such_area(call, areaID);
    auto* const fitting = dynamic_cast<Area*>(area);
    return fitting ? status_of(operation, *fitting) : takes_no_such_content(call, areaID);
}

// The same in the caller's program of one generation.
template <class Program, class Area, class Operation>
int with_area(Ouint16 areaID, const Call& call, std::initializer_list<Needed> needed,
              const Operation& operation) noexcept {
    return with_program<Program>(
        needed, [&](const ProgramObj& program) { return with_area<Area>(program, areaID, call, operation); });
}

// The same in the caller's program, whatever its generation. It makes no program, which would have one.
template <class Area, class Operation>
int with_area(Ouint16 areaID, const Call& call, std::initializer_list<Needed> needed,
              const Operation& operation) noexcept {
    return guarded(needed, [&] {
        const ProgramAccess access = ProgramAccess::existing();
        const auto renderer = lock_renderer();
        ProgramObj* program = access.any();
        return program ? with_area<Area>(*program, areaID, call, operation) : no_such_area(call, areaID);
    });
}

// Whether an area of a header's size can be drawn. Asked, as all arguments are, before the slot is taken.
template <class Header> [[nodiscard]] bool is_drawable(const Header& header) {
    return in_range("AreaWidth", header.AreaWidth, 0, kLongestSide) &&
           in_range("AreaHeight", header.AreaHeight, 0, kLongestSide);
}

// Copies an assembled file for the caller; null when memory is exhausted.
Ouint8* copy_for_caller(const ByteBuffer& file);

int move_area(ProgramObj& program, Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height);

// Exports that are alike in both generations.
template <class Program> int add_play_periods(const HVprogramppGrp_G56* periods) noexcept {
    return guarded({{"periods", periods}}, [&] {
        if (!in_range("playTimeGrpNum", periods->playTimeGrpNum, 0, std::size(periods->timeGrp)))
            return QM_FAILED + 0;
        return on_program<Program>([&](Program& program) { program.addPlayPeriodGrp(*periods); });
    });
}

template <class Program> int remove_frame() noexcept {
    return with_program<Program>({}, [](Program& program) { program.ProgramRemoveFrame(); });
}

template <class Program> int delete_area(Ouint16 areaID) noexcept {
    return with_program<Program>({}, [=](Program& program) { program.deleteArea(areaID); });
}

template <class Program>
int move_area(Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height) noexcept {
    return with_program<Program>(
        {}, [=](Program& program) { return move_area(program, areaID, x, y, width, height); });
}

} // namespace qm
