#include "simulator/Session.h"

namespace qm::sim {

Session::Session(asio::ip::tcp::socket socket, Exchange& exchange, Connections& connections)
    : m_socket(std::move(socket)), m_timer(m_socket.get_executor()), m_exchange(exchange),
      m_connections(connections), m_splitter(exchange.longest_frame()) {
    m_connections.opened();
    std::error_code ignored;
    m_socket.set_option(asio::ip::tcp::no_delay(true), ignored);
}

Session::~Session() {
    std::error_code ignored;
    m_socket.close(ignored); // before anybody hears of it
    m_connections.closed(m_updated);
}

void Session::read() {
    m_socket.async_read_some(asio::buffer(m_buffer),
                             [self = shared_from_this()](std::error_code error, std::size_t length) {
                                 if (error) return;
                                 self->m_input = Bytes(self->m_buffer).first(length);
                                 self->work();
                             });
}

// Takes one whole frame after the other; each answer is out before the next frame is looked at.
void Session::work() {
    while (const auto frame = m_splitter.next(m_input)) {
        Exchange::Turn turn = m_exchange.take(*frame);
        m_updated = m_updated || turn.updated;
        if (!turn.delivery) continue;
        m_delivery = std::move(*turn.delivery);
        if (m_delivery.then == Delivery::Then::reset) reset();
        if (m_delivery.then != Delivery::Then::stay) return;
        if (!m_delivery.bytes.empty()) return after(m_delivery.late, &Session::send_first);
    }
    read();
}

void Session::send_first() { send(Bytes(m_delivery.bytes).first(m_delivery.first), &Session::pause); }

void Session::pause() {
    if (m_delivery.first == m_delivery.bytes.size()) return work();
    after(m_delivery.pause, &Session::send_rest);
}

void Session::send_rest() { send(Bytes(m_delivery.bytes).subspan(m_delivery.first), &Session::work); }

void Session::after(std::chrono::milliseconds wait, Step next) {
    if (wait.count() == 0) return (this->*next)();
    m_timer.expires_after(wait);
    m_timer.async_wait([self = shared_from_this(), next](std::error_code error) {
        if (!error) (self.get()->*next)();
    });
}

void Session::send(Bytes bytes, Step next) {
    asio::async_write(m_socket, asio::buffer(bytes.data(), bytes.size()),
                      [self = shared_from_this(), next](std::error_code error, std::size_t) {
                          if (!error) (self.get()->*next)();
                      });
}

// From here on, closing sends RST in place of FIN.
void Session::reset() {
    std::error_code ignored;
    m_socket.set_option(asio::socket_base::linger(true, 0), ignored);
}

} // namespace qm::sim
