#include "files.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <fstream>
#include <sched.h>
#include <unistd.h>

namespace qm::sign {
namespace {

[[noreturn]] void fail(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

constexpr std::string_view kPngSignature{"\x89PNG\r\n\x1a\n", 8};

} // namespace

bool starts_as_png(const std::string& path) {
    std::array<char, kPngSignature.size()> start{};
    std::ifstream file(path, std::ios::binary);
    return file.read(start.data(), start.size()) && std::ranges::equal(start, kPngSignature);
}

void write_file(const std::filesystem::path& folder, const std::string& name, std::string_view bytes) {
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error) throw std::runtime_error(folder.string() + ": " + error.message());
    const std::filesystem::path path = folder / name, part = path.string() + ".part";
    std::ofstream file(part, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (file && std::rename(part.c_str(), path.c_str()) == 0) return;
    const int why = errno;
    std::filesystem::remove(part, error);
    errno = why;
    fail(path.string());
}

TemporaryFolder::TemporaryFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "program-XXXXXX").string();
    if (!::mkdtemp(name.data())) fail(name);
    m_path = name;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}

TemporaryCurrentFolder::TemporaryCurrentFolder() : m_before(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)) {
    if (m_before < 0) fail("the current folder");
    (void)::unshare(CLONE_FS); // where that is forbidden, the folder is that of all threads
    if (::chdir(m_folder.path().c_str()) != 0) fail(m_folder.path());
}

TemporaryCurrentFolder::~TemporaryCurrentFolder() {
    if (::fchdir(m_before) != 0) ::perror("the current folder is gone");
    ::close(m_before);
}

} // namespace qm::sign
