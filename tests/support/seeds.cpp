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

void keep_seeds(const std::string& target, Bytes bytes) {
    constexpr std::uint8_t kTypes = 16;
    ByteBuffer input(1);
    input.insert(input.end(), bytes.begin(), bytes.end());
    for (; input[0] < kTypes; ++input[0])
        if (!bytes.empty()) keep_seed(target, input);
}

void keep_program_seeds(Bytes file, Bytes data) {
    constexpr std::size_t kCrc = 4, kLongest = 16384;
    if (file.size() < kCrc || file.size() + data.size() > kLongest) return;
    ByteBuffer input(data.empty() ? 0 : 2);
    for (std::size_t i = 0; i < input.size(); ++i)
        input[i] = static_cast<std::uint8_t>((file.size() - kCrc) >> 8 * i);
    input.insert(input.end(), file.begin(), file.end() - kCrc);
    input.insert(input.end(), data.begin(), data.begin() + (std::max(data.size(), kCrc) - kCrc));
    keep_seeds("program_file", input);
}

} // namespace qm::test
