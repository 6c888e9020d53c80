// Files that a caller names.
#pragma once

#include <filesystem>

namespace qm {

// Opening anything else, such as a pipe, could block for ever.
inline bool is_ordinary_file(const std::filesystem::path& path) {
    std::error_code error;
    return std::filesystem::is_regular_file(path, error);
}

} // namespace qm
