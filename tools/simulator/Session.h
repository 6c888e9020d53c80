// One connection of a host.
#pragma once

#include "simulator/Connections.h"
#include "simulator/Exchange.h"
#include "simulator/FrameSplitter.h"

#include <array>
#include <asio.hpp>
#include <memory>

namespace qm::sim {

// Keeps itself alive while it reads, waits or writes; its end is the end of the connection.
class Session : public std::enable_shared_from_this<Session> {
  public:
    // Exchange and connections outlive the session.
    Session(asio::ip::tcp::socket socket, Exchange& exchange, Connections& connections);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;
    ~Session();

    void start() { read(); }

  private:
    using Step = void (Session::*)();

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
    Exchange& m_exchange;
    Connections& m_connections;
    bool m_updated = false;

    std::array<std::uint8_t, 65536> m_buffer{};
    Bytes m_input; // the part of the buffer that has been read and not yet looked at
    FrameSplitter m_splitter;
    Delivery m_delivery;
};

} // namespace qm::sim
