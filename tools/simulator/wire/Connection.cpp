#include "simulator/wire/Connection.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/write.hpp>

namespace qm::sim {

Connection::Connection(asio::ip::tcp::socket socket, Answerer& answerer, Connections& connections)
    : m_socket(std::move(socket)), m_timer(m_socket.get_executor()), m_answerer(answerer),
      m_connections(connections), m_splitter(answerer.longest_frame()) {
    m_connections.opened();
    NetworkError ignored;
    m_socket.set_option(asio::ip::tcp::no_delay(true), ignored);
    m_peer = text_of(m_socket.remote_endpoint(ignored));
}

Connection::~Connection() {
    NetworkError ignored;
    m_socket.close(ignored); // before anybody hears of it
    m_connections.closed(m_updated);
}

void Connection::read() {
    m_socket.async_read_some(asio::buffer(m_buffer),
                             [self = shared_from_this()](NetworkError error, std::size_t length) {
                                 if (error) return;
                                 self->m_input = Bytes(self->m_buffer).first(length);
                                 self->work();
                             });
}

// Takes one whole frame after the other; each answer is out before the next frame is looked at.
void Connection::work() {
    while (const auto frame = m_splitter.next(m_input)) {
        m_delivery = m_answerer.answer(*frame, m_peer);
        m_updated = m_updated || m_delivery.updated;
        if (m_delivery.then == Delivery::Then::reset) reset();
        if (m_delivery.then != Delivery::Then::stay) return;
        if (!m_delivery.bytes.empty()) return after(m_delivery.late, &Connection::send_first);
    }
    read();
}

void Connection::send_first() { send(Bytes(m_delivery.bytes).first(m_delivery.first), &Connection::pause); }

void Connection::pause() {
    if (m_delivery.first == m_delivery.bytes.size()) return work();
    after(m_delivery.pause, &Connection::send_rest);
}

void Connection::send_rest() { send(Bytes(m_delivery.bytes).subspan(m_delivery.first), &Connection::work); }

void Connection::after(std::chrono::milliseconds wait, Step next) {
    if (wait.count() == 0) return (this->*next)();
    m_timer.expires_after(wait);
    m_timer.async_wait([self = shared_from_this(), next](NetworkError error) {
        if (!error) (self.get()->*next)();
    });
}

void Connection::send(Bytes bytes, Step next) {
    asio::async_write(m_socket, asio::buffer(bytes.data(), bytes.size()),
                      [self = shared_from_this(), next](NetworkError error, std::size_t) {
                          if (!error) (self.get()->*next)();
                      });
}

// From here on, closing sends RST in place of FIN.
void Connection::reset() {
    NetworkError ignored;
    m_socket.set_option(asio::socket_base::linger(true, 0), ignored);
}

} // namespace qm::sim
