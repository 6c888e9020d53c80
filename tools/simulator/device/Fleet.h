// Controllers that run in one thread.
#pragma once

#include "simulator/device/Ports.h"

#include <thread>

namespace qm::sim {

class Fleet {
  public:
    // All listen when it returns. Throws what Device and Ports throw.
    explicit Fleet(std::vector<Options> options);
    Fleet(const Fleet&) = delete;
    Fleet& operator=(const Fleet&) = delete;
    // Closes every connection and joins the thread.
    ~Fleet();

    [[nodiscard]] std::size_t size() const { return m_devices.size(); }
    [[nodiscard]] Device& device(std::size_t place) { return *m_devices.at(place); }
    [[nodiscard]] const Device& device(std::size_t place) const { return *m_devices.at(place); }
    [[nodiscard]] const Ports& ports(std::size_t place) const { return *m_ports.at(place); }

  private:
    void run();

    // The order counts: the context, in which the connections live, goes before what they use.
    std::vector<std::unique_ptr<Device>> m_devices;
    asio::io_context m_context{1};
    std::vector<std::unique_ptr<Ports>> m_ports;
    std::thread m_thread;
};

} // namespace qm::sim
