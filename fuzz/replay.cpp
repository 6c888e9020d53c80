// Gives a target every file of a folder: the inputs that are kept, or one that was found. Names each as it
// goes, so that the last line before a crash tells its input.
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

std::vector<std::filesystem::path> files_in(const std::filesystem::path& path) {
    if (!is_directory(path)) return {path};
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::directory_iterator(path)) files.push_back(entry.path());
    return files;
}

bool run(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    if (!file) return false;
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const std::vector<std::uint8_t> input(text.begin(), text.end()); // of exact length, for the sanitizers
    std::printf("%s\n", path.c_str());
    std::fflush(stdout);
    LLVMFuzzerTestOneInput(input.data(), input.size());
    return true;
}

} // namespace

int main(int argc, char** argv) {
    std::size_t count = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& path : files_in(argv[i])) {
            if (!run(path)) return 1;
            ++count;
        }
    }
    std::printf("%zu inputs\n", count);
    return count > 0 ? 0 : 1;
}
