// Takes connections, as many as come.
#pragma once

#include "simulator/wire/Connection.h"

namespace qm::sim {

class Server {
  public:
    // Listens when it returns; throws std::system_error when the endpoint cannot be had. The others outlive
    // it.
    Server(asio::io_context& context, const asio::ip::tcp::endpoint& endpoint, Answerer& answerer,
           Connections& connections);

    [[nodiscard]] std::uint16_t port() const { return m_acceptor.local_endpoint().port(); }

  private:
    void accept();
    void accept_later();

    asio::ip::tcp::acceptor m_acceptor;
    asio::steady_timer m_timer;
    Answerer& m_answerer;
    Connections& m_connections;
};

} // namespace qm::sim
