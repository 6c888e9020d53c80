// Answers datagrams, each to its sender alone.
#pragma once

#include "simulator/wire/network.h"
#include "support/bytes.h"

#include <array>
#include <chrono>
#include <functional>
#include <vector>

namespace qm::sim {

struct Datagram {
    ByteBuffer bytes;
    std::chrono::milliseconds late{0}; // before it is sent
};

class UdpServer {
  public:
    using Handler = std::function<std::vector<Datagram>(Bytes, const std::string& peer)>;

    // Bound when it returns; throws std::system_error when the endpoint cannot be had.
    UdpServer(asio::io_context& context, const asio::ip::udp::endpoint& endpoint, Handler handler);

    [[nodiscard]] std::uint16_t port() const { return m_socket.local_endpoint().port(); }

  private:
    void receive();
    void answer_all(Bytes input);
    void answer(Datagram datagram);
    void send(Bytes bytes, const asio::ip::udp::endpoint& to);

    asio::ip::udp::socket m_socket;
    Handler m_handler;
    asio::ip::udp::endpoint m_sender;
    std::array<std::uint8_t, 65536> m_buffer{};
};

} // namespace qm::sim
