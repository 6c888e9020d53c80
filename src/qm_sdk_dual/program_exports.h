// What the program_ exports are made with.
#pragma once

#include "program/ProgramSlot.h"
#include "qm_sdk_dual/exports.h"
#include "support/message.h"

namespace qm {

// The call is for one generation, and the program in the slot of the other; -1.
int of_other_generation(int asked);

// Runs an operation on the caller's program of one generation, under the renderer's lock; -1 when the slot
// holds a program of the other generation.
template <class Operation> int on_program_g5(Operation&& operation) {
    const ProgramAccess access = ProgramAccess::generation5();
    const auto renderer = lock_renderer();
    ProgramObj* program = access.g5();
    return program ? operation(*program) : of_other_generation(5);
}

template <class Operation> int on_program_g6(Operation&& operation) {
    const ProgramAccess access = ProgramAccess::generation6();
    const auto renderer = lock_renderer();
    ProgramObj_g6* program = access.g6();
    return program ? operation(*program) : of_other_generation(6);
}

// The same as the whole of an export that needs these arguments.
template <class Operation>
int with_program_g5(std::initializer_list<Needed> needed, Operation&& operation) noexcept {
    return guarded(needed, [&] { return on_program_g5(operation); });
}

template <class Operation>
int with_program_g6(std::initializer_list<Needed> needed, Operation&& operation) noexcept {
    return guarded(needed, [&] { return on_program_g6(operation); });
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
int with_area(const ProgramObj& program, Ouint16 areaID, const Call& call, Operation&& operation) {
    HVarea* const area = program.getArea(areaID);
    if (!area) return no_such_area(call, areaID);
    auto* const fitting = dynamic_cast<Area*>(area);
    return fitting ? operation(*fitting) : takes_no_such_content(call, areaID);
}

// The same in the caller's program, whatever its generation. It makes no program, which would have one.
template <class Area, class Operation>
int with_area(Ouint16 areaID, const Call& call, std::initializer_list<Needed> needed,
              Operation&& operation) noexcept {
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

[[nodiscard]] bool is_valid(const HVprogramppGrp_G56& periods);

// Copies an assembled file for the caller; null when memory is exhausted.
Ouint8* copy_for_caller(const ByteBuffer& file);

int move_area(ProgramObj& program, Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height);

} // namespace qm
