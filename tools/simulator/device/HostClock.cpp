#include "simulator/device/HostClock.h"

namespace qm::sim {

HostClock::HostClock(std::optional<LocalSeconds> start, unsigned rate) : m_from(start), m_rate(rate) {
    if (rate != 1 && !start) m_from = host_time();
}

LocalSeconds HostClock::at(LocalSeconds system) const {
    if (!m_from) return system;
    // In nanoseconds, the fastest clock would overflow within two days.
    const auto passed =
        std::chrono::floor<std::chrono::milliseconds>(std::chrono::steady_clock::now() - m_since);
    return *m_from + std::chrono::floor<std::chrono::seconds>(passed * m_rate);
}

void HostClock::set(LocalSeconds time) {
    m_from = time;
    m_since = std::chrono::steady_clock::now();
}

void HostClock::set_rate(unsigned rate, LocalSeconds system) {
    set(at(system));
    m_rate = rate;
}

} // namespace qm::sim
