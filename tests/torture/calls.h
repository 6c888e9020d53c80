// Every exported function with typical arguments, as the torture calls it.
#pragma once

#include "qm_sdk_dual.h"

#include <vector>

namespace qm::test {

// What a call needs: nothing but a controller of generation 6 or 5, or a program of one of them, too.
enum class Stage { six, five, program_six, program_five, broadcast };

struct Call {
    const char* name;
    Stage stage;
    int (*run)(Ouint16 port);
    int (*before)() = nullptr; // of the program that is made for it
};
const std::vector<Call>& all_calls();

// Pictures for them in the current folder.
void write_pictures();
// The program that the calls of a stage change: text, pictures, clocks, in generation 6 a background.
void make_program(Stage stage);

} // namespace qm::test
