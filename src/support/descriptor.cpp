#include "support/descriptor.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace qm {

void Descriptor::reset() {
    if (m_fd >= 0) ::close(m_fd);
    m_fd = -1;
}

int wait_ready(int fd, short events, Clock::time_point deadline) {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd entry{fd, events, 0};
        const int ready = ::poll(&entry, 1, left.count() > 0 ? static_cast<int>(left.count()) : 0);
        if (ready > 0) return entry.revents;
        if (ready == 0) return 0;
        if (errno != EINTR) return -1;
    }
}

} // namespace qm
