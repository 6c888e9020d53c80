// The error values with which the simulated controller refuses a request.
#pragma once

#include <cstdint>

namespace qm::sim {

// X(enumerator, value, meaning). The values keep clear of every status that the library itself returns.
#define QM_SIM_ERRORS(X)                                                                                     \
    X(unknown_command, 101, "the controller has no such command")                                            \
    X(bad_length, 102, "the payload has not the length that the command asks for")                           \
    X(malformed, 103, "the lengths and counts inside the payload contradict each other")                     \
    X(bad_value, 104, "a field holds a value that it cannot have")                                           \
    X(bad_pixel_data, 105, "the pixel data of a page has not the length that its rectangle asks for")        \
    X(no_memory, 106, "the controller has no room left for it")                                              \
    X(file_exists, 107, "a file of that name exists and is not to be overwritten")                           \
    X(no_such_file, 108, "the controller has no file of that name")                                          \
    X(out_of_order, 109, "the command does not continue what came before it")                                \
    X(bad_checksum, 110, "the file does not end with what was announced, or its checksum is wrong")          \
    X(wrong_password, 111, "the password is not the one that is set")                                        \
    X(other_generation, 112, "the payload is in the form of the other generation")                           \
    X(refused_by_fault, 199, "a fault asked for it")

#define QM_SIM_ERROR_ENUMERATOR(name, value, meaning) name = (value),
enum class ErrorValue : std::uint16_t { QM_SIM_ERRORS(QM_SIM_ERROR_ENUMERATOR) };
#undef QM_SIM_ERROR_ENUMERATOR

// What an error value means; "error" for one that is not in the list.
[[nodiscard]] constexpr const char* meaning_of(ErrorValue error) {
#define QM_SIM_ERROR_MEANING(name, value, meaning)                                                           \
    if (error == ErrorValue::name) return meaning;
    QM_SIM_ERRORS(QM_SIM_ERROR_MEANING)
#undef QM_SIM_ERROR_MEANING
    return "error";
}

} // namespace qm::sim
