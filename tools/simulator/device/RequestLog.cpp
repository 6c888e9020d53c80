#include "simulator/device/RequestLog.h"

#include <algorithm>

namespace qm::sim {

void RequestLog::add(LogEntry entry) {
    const std::lock_guard lock(m_mutex);
    entry.number = ++m_latest;
    m_bytes += entry.bytes.size();
    m_entries.push_back(std::move(entry));
    if (m_entries.size() > kEntries) {
        m_bytes -= m_entries.front().bytes.size();
        m_entries.pop_front();
    }
    forget_bytes();
}

// A thousand controllers have a log each.
void RequestLog::forget_bytes() {
    constexpr std::size_t kMostBytes = std::size_t{256} << 10U;
    for (auto entry = m_entries.begin(); m_bytes > kMostBytes && entry != m_entries.end(); ++entry) {
        m_bytes -= entry->bytes.size();
        entry->bytes = {};
    }
}

std::uint64_t RequestLog::latest() const {
    const std::lock_guard lock(m_mutex);
    return m_latest;
}

std::vector<LogEntry> RequestLog::after(std::uint64_t number, std::size_t most) const {
    const std::lock_guard lock(m_mutex);
    const std::size_t news = std::min<std::uint64_t>({m_latest - number, m_entries.size(), most});
    return {m_entries.end() - static_cast<std::ptrdiff_t>(news), m_entries.end()};
}

} // namespace qm::sim
