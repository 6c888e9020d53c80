#include "Output.h"

#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace qm::ctl {

Output::Output() {
    if (const int copy = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 3); copy >= 0)
        m_results.reset(::fdopen(copy, "w"));
    const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    if (null < 0) throw std::runtime_error("cannot open /dev/null");
    if (null == STDOUT_FILENO) return; // it was closed
    ::dup2(null, STDOUT_FILENO);
    ::close(null);
}

void Output::show_messages() {
    ::dup2(STDERR_FILENO, STDOUT_FILENO);
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

void Output::write(std::string_view text) {
    std::FILE* file = m_results.get();
    if (!file || std::fwrite(text.data(), 1, text.size(), file) != text.size() || std::fflush(file) != 0)
        throw std::runtime_error("cannot write the result to standard output");
}

bool Output::is_terminal() const { return m_results && ::isatty(::fileno(m_results.get())) == 1; }

void Output::show(std::string_view text) noexcept {
    if (!m_results) return;
    std::fwrite(text.data(), 1, text.size(), m_results.get());
    std::fflush(m_results.get());
}

} // namespace qm::ctl
