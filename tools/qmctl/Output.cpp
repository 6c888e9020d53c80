#include "Output.h"

#include <chrono>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace qm::ctl {
namespace {

bool put(std::FILE* file, std::string_view text) noexcept {
    return file && std::fwrite(text.data(), 1, text.size(), file) == text.size() && std::fflush(file) == 0;
}

} // namespace

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
    const std::lock_guard lock(m_mutex);
    wipe();
    const bool written = put(m_results.get(), text);
    draw();
    if (!written) throw std::runtime_error("cannot write the result to standard output");
}

void Output::show(std::string_view text) noexcept {
    const std::lock_guard lock(m_mutex);
    wipe();
    (void)put(m_results.get(), text);
    draw();
}

void Output::remark(std::string_view text) noexcept {
    constexpr std::chrono::milliseconds kLongest{500};
    const std::unique_lock lock(m_mutex, kLongest);
    if (!lock) return (void)put(stderr, text);
    wipe();
    (void)put(stderr, text);
    draw();
}

bool Output::is_terminal() const { return m_results && ::isatty(::fileno(m_results.get())) == 1; }

void Output::pass(std::string line) noexcept {
    const std::unique_lock lock(m_mutex, std::try_to_lock);
    if (!lock) return; // the next one will come
    wipe();
    m_passing = std::move(line);
    draw();
}

void Output::wipe() noexcept {
    if (!m_passing.empty()) (void)put(m_results.get(), "\r\x1B[K");
}

void Output::draw() noexcept {
    if (!m_passing.empty()) (void)put(m_results.get(), m_passing);
}

} // namespace qm::ctl
