#include "simulator/wire/UdpServer.h"

#include <boost/asio/buffer.hpp>
#include <new>

namespace qm::sim {

UdpServer::UdpServer(asio::io_context& context, const asio::ip::udp::endpoint& endpoint, Handler handler)
    : m_socket(socket_at<asio::ip::udp::socket>(context, endpoint)), m_handler(std::move(handler)) {
    receive();
}

void UdpServer::receive() {
    m_socket.async_receive_from(asio::buffer(m_buffer), m_sender,
                                [this](NetworkError error, std::size_t length) {
                                    if (error == asio::error::operation_aborted) return;
                                    // Any other error speaks of an answer that found nobody.
                                    if (!error) answer_all(Bytes(m_buffer).first(length));
                                    receive();
                                });
}

// A question that is too much for the memory stays without an answer.
void UdpServer::answer_all(Bytes input) {
    try {
        for (Datagram& datagram : m_handler(input, text_of(m_sender))) answer(std::move(datagram));
    } catch (const std::bad_alloc&) {
    }
}

void UdpServer::answer(Datagram datagram) {
    if (datagram.late.count() == 0) return send(datagram.bytes, m_sender);
    const auto timer = std::make_shared<asio::steady_timer>(m_socket.get_executor(), datagram.late);
    timer->async_wait([this, timer, to = m_sender, bytes = std::move(datagram.bytes)](NetworkError error) {
        if (!error) send(bytes, to);
    });
}

// What does not fit a datagram, or finds no way, is lost, as datagrams are.
void UdpServer::send(Bytes bytes, const asio::ip::udp::endpoint& to) {
    NetworkError ignored;
    m_socket.send_to(asio::buffer(bytes.data(), bytes.size()), to, 0, ignored);
}

} // namespace qm::sim
