// What the program_ exports are made with.
#pragma once

#include "program/ProgramSlot.h"
#include "qm_sdk_dual/exports.h"
#include "support/message.h"

namespace qm {

// Runs an operation on the caller's program of one generation, under the renderer's lock; -1 when the slot
// holds a program of the other generation.
template <class Operation> int with_program_g5(Operation&& operation) noexcept {
    return guarded([&] {
        const ProgramAccess access = ProgramAccess::generation5();
        const auto renderer = lock_renderer();
        ProgramObj* program = access.g5();
        return program ? operation(*program) : QM_FAILED + 0;
    });
}

template <class Operation> int with_program_g6(Operation&& operation) noexcept {
    return guarded([&] {
        const ProgramAccess access = ProgramAccess::generation6();
        const auto renderer = lock_renderer();
        ProgramObj_g6* program = access.g6();
        return program ? operation(*program) : QM_FAILED + 0;
    });
}

// The same for a program of either generation.
template <class Operation> int with_program(Operation&& operation) noexcept {
    return guarded([&] {
        const ProgramAccess access = ProgramAccess::generation5();
        const auto renderer = lock_renderer();
        return operation(access.any());
    });
}

// Runs an operation on an area of a program; -1, after a message with the export's name, when there is none
// of that number and kind.
template <class Area, class Operation>
int with_area(const ProgramObj& program, Ouint16 areaID, const char* name, Operation&& operation) {
    auto* area = dynamic_cast<Area*>(program.getArea(areaID));
    if (area) return operation(*area);
    say("Error:%s==>Can not find the area.please check areaID.\n", name);
    return QM_FAILED;
}

// Copies an assembled file for the caller; null when memory is exhausted.
Ouint8* copy_for_caller(const Frame& file);

int move_area(ProgramObj& program, Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height);

} // namespace qm
