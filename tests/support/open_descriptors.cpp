#include "open_descriptors.h"

#include <filesystem>

namespace qm::test {

std::size_t open_descriptors() {
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        const std::string what = std::filesystem::read_symlink(entry, gone).string();
        if (!gone && !what.starts_with("pipe:")) ++count;
    }
    return count;
}

} // namespace qm::test
