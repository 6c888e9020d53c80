// The controllers of one process.
#pragma once

#include "simulator/device/Options.h"

namespace qm::sim {

constexpr unsigned kMostControllers = 10000;
constexpr unsigned kLastPort = 65535;

// Values of the command line and of files. They throw std::invalid_argument with what was expected instead.
void take_size(Options& options, const std::string& text); // 128x32
[[nodiscard]] ScreenColor read_color(const std::string& text);

// So many that differ in name, store and, unless it is 0, port. Throws std::invalid_argument when ports run
// out.
[[nodiscard]] std::vector<Options> copies_of(const Options& options, unsigned count);

// A name as that of a file or folder: %, /, a zero byte and a dot in front as %XX, all else as it is.
[[nodiscard]] std::string file_name_for(const std::string& name);

// Those that a JSON file lists; what an item does not say is as in the options. Throws std::invalid_argument
// with a sentence.
[[nodiscard]] std::vector<Options> controllers_in(const std::string& path, const Options& options);

} // namespace qm::sim
