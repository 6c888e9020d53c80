#include "simulator/wire/Server.h"

namespace qm::sim {

Server::Server(asio::io_context& context, const asio::ip::tcp::endpoint& endpoint, Take take)
    : m_acceptor(socket_at<asio::ip::tcp::acceptor>(context, endpoint)), m_timer(context),
      m_take(std::move(take)) {
    accept();
}

void Server::accept() {
    m_acceptor.async_accept([this](NetworkError error, asio::ip::tcp::socket socket) {
        if (error == asio::error::operation_aborted) return;
        if (error) return accept_later();
        accept(); // even if there is no memory for this one
        m_take(std::move(socket));
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
