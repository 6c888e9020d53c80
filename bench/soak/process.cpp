#include "process.h"

#include <filesystem>
#include <fstream>
#include <string>

namespace qm::test {

std::size_t memory_of(pid_t process) {
    std::ifstream status("/proc/" + std::to_string(process) + "/status");
    for (std::string word; status >> word;)
        if (std::size_t size = 0; word == "VmRSS:" && status >> size) return size;
    return 0;
}

std::size_t descriptors_of(pid_t process) {
    const std::filesystem::directory_iterator all("/proc/" + std::to_string(process) + "/fd");
    return static_cast<std::size_t>(std::distance(begin(all), end(all)));
}

} // namespace qm::test
