#include "support/Descriptor.h"

#include <cerrno>
#include <unistd.h>

namespace qm {

void Descriptor::reset() {
    if (m_fd >= 0) ::close(m_fd);
    m_fd = -1;
}

int wait_any(std::span<pollfd> entries, Clock::time_point deadline) {
    for (;;) {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
        const int ready =
            ::poll(entries.data(), entries.size(), left.count() > 0 ? static_cast<int>(left.count()) : 0);
        if (ready >= 0 || errno != EINTR) return ready;
    }
}

int wait_ready(int fd, short events, Clock::time_point deadline) {
    pollfd entry{fd, events, 0};
    const int ready = wait_any({&entry, 1}, deadline);
    return ready > 0 ? entry.revents : ready;
}

} // namespace qm
