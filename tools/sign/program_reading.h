// Reads a program's description from its JSON file.
#pragma once

#include "JsonReader.h"
#include "ProgramDescription.h"

namespace qm::sign {

// Paths in the file are relative to its folder. Throws JsonError with the field and the reason.
[[nodiscard]] ProgramDescription read_program(const std::string& path);

// Takes a step, and tells what is wrong with the description with its name.
template <class Step> auto name_description(const std::string& path, Step step) -> decltype(step()) {
    try {
        return step();
    } catch (const JsonError& error) {
        throw UsageError(path + ": " + error.what());
    }
}

} // namespace qm::sign
