// Takes connections, as many as come.
#pragma once

#include "simulator/wire/network.h"

#include <functional>

namespace qm::sim {

class Server {
  public:
    using Take = std::function<void(asio::ip::tcp::socket)>;

    // Listens when it returns; throws EndpointError when the endpoint cannot be had. The context outlives it.
    Server(asio::io_context& context, const asio::ip::tcp::endpoint& endpoint, Take take);

    [[nodiscard]] asio::ip::tcp::endpoint endpoint() const { return m_acceptor.local_endpoint(); }

  private:
    void accept();
    void accept_later();

    asio::ip::tcp::acceptor m_acceptor;
    asio::steady_timer m_timer;
    Take m_take;
};

} // namespace qm::sim
