// What a target promises of every input. A promise that is not kept ends the process, so that libFuzzer keeps
// the input; unlike assert() it holds in every build.
#pragma once

namespace qm::fuzz {

void require(bool kept, const char* file = __builtin_FILE(), int line = __builtin_LINE());

} // namespace qm::fuzz
