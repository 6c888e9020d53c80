// One connection of a host.
#pragma once

#include "simulator/wire/Answerer.h"
#include "simulator/wire/Connections.h"
#include "simulator/wire/network.h"

#include <array>
#include <memory>

namespace qm::sim {

// Keeps itself alive while it reads, waits or writes; its end is the end of the connection.
class Connection : public std::enable_shared_from_this<Connection> {
  public:
    // Both outlive the connection.
    Connection(asio::ip::tcp::socket socket, Answerer& answerer, Connections& connections);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    void start() { read(); }

  private:
    using Step = void (Connection::*)();

    void read();
    void work();
    void send_first();
    void pause();
    void send_rest();
    void after(std::chrono::milliseconds wait, Step next);
    void send(Bytes bytes, Step next);
    void reset();

    asio::ip::tcp::socket m_socket;
    asio::steady_timer m_timer;
    Answerer& m_answerer;
    Connections& m_connections;
    std::string m_peer;
    bool m_updated = false;

    std::array<std::uint8_t, 65536> m_buffer{};
    Bytes m_input; // the part of the buffer that has been read and not yet looked at
    FrameSplitter m_splitter;
    Delivery m_delivery;
};

} // namespace qm::sim
