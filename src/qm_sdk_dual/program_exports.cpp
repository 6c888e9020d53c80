#include "qm_sdk_dual/program_exports.h"

#include <cstdlib>

namespace qm {
namespace {

constexpr int kUnknownArea = 29;

bool is_u16(Oint32 value) { return value >= 0 && value <= 0xFFFF; }

} // namespace

bool is_drawable(Oint32 width, Oint32 height) {
    constexpr Oint32 kLongestSide = 32767; // of a cairo surface
    return width >= 0 && height >= 0 && width <= kLongestSide && height <= kLongestSide;
}

int no_such_area(const Call& call) {
    say("Error:%s==>Can not find the area.please check areaID.\n", call.name);
    return QM_FAILED;
}

int takes_no_such_content(const Call& call) {
    say("Error:%s==>The area takes no %s.\n", call.name, call.content);
    return QM_FAILED;
}

Ouint8* copy_for_caller(const Frame& file) {
    auto* copy = static_cast<Ouint8*>(std::malloc(file.size()));
    if (copy) std::copy(file.begin(), file.end(), copy);
    return copy;
}

int move_area(ProgramObj& program, Ouint16 areaID, Oint32 x, Oint32 y, Oint32 width, Oint32 height) {
    if (!program.getArea(areaID)) {
        say("Error:Wrong areaID.This area does not exist.\n");
        return kUnknownArea;
    }
    if (!is_u16(x) || !is_u16(y) || !is_drawable(width, height)) return QM_FAILED;
    const auto u16 = [](Oint32 value) { return static_cast<Ouint16>(value); };
    program.MoveArea(areaID, {0, u16(x), u16(y), u16(width), u16(height)});
    return QM_OK;
}

} // namespace qm
