#include "seeds.h"

#include "global.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace qm::test {

void keep_seed(const std::string& target, Bytes bytes) {
    const char* const root = std::getenv("QM_SEEDS");
    if (!root) return;
    const std::filesystem::path folder = std::filesystem::path(root) / target;
    create_directories(folder);
    const auto name = std::to_string(calc_crc32(bytes)) + "-" + std::to_string(bytes.size());
    std::ofstream(folder / name, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

} // namespace qm::test
