#include "simulator/wire/Server.h"

namespace qm::sim {

Server::Server(asio::io_context& context, const asio::ip::tcp::endpoint& endpoint, Answerer& answerer,
               Connections& connections)
    : m_acceptor(socket_at<asio::ip::tcp::acceptor>(context, endpoint)), m_timer(context),
      m_answerer(answerer), m_connections(connections) {
    accept();
}

void Server::accept() {
    m_acceptor.async_accept([this](NetworkError error, asio::ip::tcp::socket socket) {
        if (error == asio::error::operation_aborted) return;
        if (error) return accept_later();
        std::make_shared<Connection>(std::move(socket), m_answerer, m_connections)->start();
        accept();
    });
}

// Out of descriptors, most likely: there will be some again when connections have ended.
void Server::accept_later() {
    m_timer.expires_after(std::chrono::milliseconds(50));
    m_timer.async_wait([this](NetworkError error) {
        if (!error) accept();
    });
}

} // namespace qm::sim
