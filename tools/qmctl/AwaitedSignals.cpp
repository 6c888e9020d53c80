#include "AwaitedSignals.h"

#include <algorithm>
#include <cerrno>
#include <ctime>

namespace qm::ctl {

AwaitedSignals::AwaitedSignals() {
    ::sigemptyset(&m_set);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) { // the last one comes when the terminal is closed
        struct ::sigaction action {};
        ::sigaction(signal, nullptr, &action);
        if (action.sa_handler != SIG_IGN) ::sigaddset(&m_set, signal);
    }
    ::pthread_sigmask(SIG_BLOCK, &m_set, &m_before);
}

AwaitedSignals::~AwaitedSignals() { ::pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }

bool AwaitedSignals::wait(std::chrono::seconds time) const {
    using namespace std::chrono;
    const auto end = steady_clock::now() + time;
    for (;;) {
        const auto left = std::max<nanoseconds>(end - steady_clock::now(), nanoseconds(0));
        const ::timespec limit{.tv_sec = duration_cast<seconds>(left).count(),
                               .tv_nsec = (left % seconds(1)).count()};
        if (::sigtimedwait(&m_set, nullptr, &limit) > 0) return true;
        if (errno != EINTR) return false; // else it was stopped, and goes on
    }
}

} // namespace qm::ctl
