// The files of programs on a controller.
#pragma once

#include "qm_sdk_dual.hpp"

namespace qm::sign {

// P007, and from 1000 on 1234.
[[nodiscard]] std::string program_name(unsigned id);
// That of its data, in generation 6: D007, D234. Programs whose numbers end alike share it.
[[nodiscard]] std::string data_name(const std::string& program);

[[nodiscard]] FileEntry entry_of(const File& file); // as the controller lists it

[[nodiscard]] bool is_program(const FileEntry& file); // by name and type
[[nodiscard]] bool is_data(const FileEntry& file);

// Files of all kinds that programs are made of: programs and, in generation 6, data. Throws Failure.
[[nodiscard]] std::vector<FileEntry> list_program_files(const Controller& controller,
                                                        const Identity& identity);

} // namespace qm::sign
