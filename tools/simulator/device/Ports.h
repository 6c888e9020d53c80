// Where a device listens, and the timer by which its screen changes.
#pragma once

#include "simulator/device/Device.h"
#include "simulator/wire/Connection.h"
#include "simulator/wire/Server.h"
#include "simulator/wire/UdpServer.h"

#include <memory>

namespace qm::sim {

class Ports {
  public:
    // Listens when it returns. Throws std::system_error when the address cannot be had, std::runtime_error
    // when a UDP port cannot. Context and device outlive it.
    Ports(asio::io_context& context, Device& device);
    Ports(const Ports&) = delete;
    Ports& operator=(const Ports&) = delete;

    [[nodiscard]] std::uint16_t tcp() const { return m_tcp; }
    // 0 without one.
    [[nodiscard]] std::uint16_t udp() const { return m_udp_port; }
    [[nodiscard]] std::uint16_t wifi() const { return m_wifi_port; }

  private:
    void open_udp(std::unique_ptr<UdpServer>& server, std::optional<std::uint16_t> port,
                  std::vector<Datagram> (*handler)(Exchange&, Bytes, const std::string&));
    void tick();

    asio::io_context& m_context;
    Device& m_device;
    asio::steady_timer m_timer;
    Server m_server;
    std::unique_ptr<UdpServer> m_udp, m_wifi;
    const std::uint16_t m_tcp;
    std::uint16_t m_udp_port = 0, m_wifi_port = 0;
};

} // namespace qm::sim
