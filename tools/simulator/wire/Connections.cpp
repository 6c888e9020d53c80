#include "simulator/wire/Connections.h"

namespace qm::sim {

void Connections::opened() {
    const std::lock_guard lock(m_mutex);
    ++m_accepted;
    ++m_open;
}

void Connections::closed(bool updated) {
    bool muted = false;
    {
        const std::lock_guard lock(m_mutex);
        --m_open;
        muted = m_muted;
    }
    m_changed.notify_all();
    if (!muted && m_on_closed) m_on_closed(updated);
}

void Connections::mute() {
    const std::lock_guard lock(m_mutex);
    m_muted = true;
}

std::size_t Connections::accepted() const {
    const std::lock_guard lock(m_mutex);
    return m_accepted;
}

std::size_t Connections::open() const {
    const std::lock_guard lock(m_mutex);
    return m_open;
}

bool Connections::wait_idle(std::chrono::milliseconds limit) const {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, limit, [this] { return m_open == 0; });
}

} // namespace qm::sim
