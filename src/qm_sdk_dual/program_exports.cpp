#include "qm_sdk_dual/program_exports.h"

#include <cstdlib>

namespace qm {
namespace {

constexpr int kUnknownArea = 29;

} // namespace

int of_other_generation(int asked) {
    return fail(QM_FAILED, "The call is for generation %d, and the program of the other.", asked);
}

int no_such_area(const Call& call, Ouint16 areaID) {
    say("Error:%s==>Can not find the area.please check areaID.\n", call.name);
    return fail(QM_FAILED, "The program has no area %d.", areaID);
}

int takes_no_such_content(const Call& call, Ouint16 areaID) {
    say("Error:%s==>The area takes no %s.\n", call.name, call.content);
    return fail(QM_FAILED, "Area %d takes no %s.", areaID, call.content);
}

Ouint8* copy_for_caller(const ByteBuffer& file) {
    auto* copy = static_cast<Ouint8*>(std::malloc(file.size()));
    if (copy)
        std::copy(file.begin(), file.end(), copy);
    else
        (void)fail_by_memory();
    return copy;
}

int move_area(ProgramObj& program, Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height) {
    if (!program.getArea(areaID)) {
        say("Error:Wrong areaID.This area does not exist.\n");
        return fail(kUnknownArea, "The program has no area %d.", areaID);
    }
    if (!in_range("x", x, 0, 0xFFFF) || !in_range("y", y, 0, 0xFFFF) ||
        !in_range("width", width, 0, kLongestSide) || !in_range("height", height, 0, kLongestSide))
        return QM_FAILED;
    const auto u16 = [](Oint32 value) { return static_cast<Ouint16>(value); };
    program.MoveArea(areaID, {0, u16(x), u16(y), u16(width), u16(height)});
    return QM_OK;
}

} // namespace qm
