#include "support/TemporaryFile.h"

#include "support/Descriptor.h"
#include "support/reason.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <system_error>
#include <unistd.h>

namespace qm {
namespace {

[[noreturn]] void give_up(int error) {
    (void)fail(QM_FAILED, "A temporary file cannot be written: %s.", error_text(error));
    throw std::system_error(error, std::generic_category(), "temporary file");
}

void write_all(int fd, Bytes content) {
    while (!content.empty()) {
        const auto n = ::write(fd, content.data(), content.size());
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) give_up(errno);
        content = content.subspan(static_cast<std::size_t>(n));
    }
}

} // namespace

TemporaryFile::TemporaryFile(Bytes content)
    : m_path(std::filesystem::absolute(std::filesystem::temp_directory_path() / "qm_XXXXXX").string()),
      m_owner(::getpid()) {
    const Descriptor file(::mkostemp(m_path.data(), O_CLOEXEC));
    if (!file) give_up(errno);
    try {
        write_all(file.get(), content);
    } catch (...) {
        ::unlink(m_path.c_str());
        throw;
    }
}

TemporaryFile::~TemporaryFile() {
    if (::getpid() == m_owner) ::unlink(m_path.c_str()); // else this is a forked child's copy
}

} // namespace qm
