#include "simulator/device/Fleet.h"

#include <new>

namespace qm::sim {

Fleet::Fleet(std::vector<Options> options) {
    for (Options& one : options) m_devices.push_back(std::make_unique<Device>(std::move(one)));
    for (const auto& device : m_devices) m_ports.push_back(std::make_unique<Ports>(m_context, *device));
    m_thread = std::thread([this] { run(); });
}

Fleet::~Fleet() {
    for (const auto& device : m_devices) device->connections().mute();
    m_context.stop();
    m_thread.join();
}

// A connection that ran out of memory is gone by the time its exception arrives here; the others go on.
void Fleet::run() {
    while (!m_context.stopped()) try {
            m_context.run();
        } catch (const std::bad_alloc&) {
        }
}

} // namespace qm::sim
