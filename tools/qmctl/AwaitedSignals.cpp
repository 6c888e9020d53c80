#include "AwaitedSignals.h"

#include <cerrno>
#include <ctime>

namespace qm::ctl {

AwaitedSignals::AwaitedSignals(std::initializer_list<int> more) {
    ::sigemptyset(&m_set);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) { // the last one comes when the terminal is closed
        struct ::sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN) ::sigaddset(&m_set, signal);
    }
    for (const int signal : more) ::sigaddset(&m_set, signal);
    ::pthread_sigmask(SIG_BLOCK, &m_set, &m_before);
}

AwaitedSignals::~AwaitedSignals() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

int AwaitedSignals::wait(std::chrono::seconds time) const {
    const auto end = std::chrono::steady_clock::now() + time;
    ::timespec limit{.tv_sec = time.count(), .tv_nsec = 0};
    for (;;) {
        const int signal = ::sigtimedwait(&m_set, nullptr, &limit);
        if (signal > 0 || errno != EINTR) return signal > 0 ? signal : 0;
        const auto left = end - std::chrono::steady_clock::now(); // stopped, and gone on with
        if (left <= std::chrono::seconds(0)) return 0;
        limit = {.tv_sec = std::chrono::duration_cast<std::chrono::seconds>(left).count(), .tv_nsec = 0};
    }
}

} // namespace qm::ctl
