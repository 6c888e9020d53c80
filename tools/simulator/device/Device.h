// A controller and those who are connected to it.
#pragma once

#include "simulator/device/Exchange.h"
#include "simulator/wire/Connections.h"

namespace qm::sim {

class Device {
  public:
    // Throws std::invalid_argument for options out of range, std::runtime_error when the store cannot be had.
    explicit Device(Options options);

    [[nodiscard]] const Options& options() const { return m_options; }
    [[nodiscard]] Exchange& exchange() { return m_exchange; }
    [[nodiscard]] const Exchange& exchange() const { return m_exchange; }
    [[nodiscard]] Connections& connections() { return m_connections; }
    [[nodiscard]] const Connections& connections() const { return m_connections; }

  private:
    const Options m_options;
    Exchange m_exchange;
    Connections m_connections;
};

} // namespace qm::sim
