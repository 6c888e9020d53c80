#include "simulator/device/Ports.h"

#include <boost/asio/post.hpp>
#include <new>
#include <stdexcept>

namespace qm::sim {
namespace {

asio::ip::address_v4 address_of(const std::string& text) {
    NetworkError error;
    auto address = asio::ip::make_address_v4(text, error);
    if (error) throw std::invalid_argument("the address to listen on must be a dotted IPv4 address");
    return address;
}

// Answers every frame of a datagram.
std::vector<Datagram> answer_frames(Exchange& exchange, Bytes input, const std::string& peer) {
    std::vector<Datagram> answers;
    FrameSplitter splitter(input.size());
    while (const auto frame = splitter.next(input)) {
        Delivery delivery = exchange.answer(*frame, peer);
        if (!delivery.bytes.empty()) answers.push_back({std::move(delivery.bytes), delivery.late});
    }
    return answers;
}

std::vector<Datagram> answer_text(Exchange& exchange, Bytes input, const std::string& peer) {
    const std::string answer =
        exchange.ask_wifi({reinterpret_cast<const char*>(input.data()), input.size()}, peer);
    return {{ByteBuffer(answer.begin(), answer.end())}};
}

} // namespace

Ports::Ports(asio::io_context& context, Device& device)
    : m_context(context), m_device(device), m_timer(context),
      m_server(context, {address_of(device.options().listen), device.options().port},
               [&device](asio::ip::tcp::socket socket) {
                   std::make_shared<Connection>(std::move(socket), device.exchange(), device.connections())
                       ->start();
               }),
      m_tcp(m_server.endpoint().port()) {
    open_udp(m_udp, device.options().udp, answer_frames);
    open_udp(m_wifi, device.options().wifi, answer_text);
    if (m_udp) m_udp_port = m_udp->port();
    if (m_wifi) m_wifi_port = m_wifi->port();
    const auto look = [this] { asio::post(m_context, [this] { tick(); }); };
    device.exchange().on_wake(look);
    look();
}

void Ports::open_udp(std::unique_ptr<UdpServer>& server, std::optional<std::uint16_t> port,
                     std::vector<Datagram> (*handler)(Exchange&, Bytes, const std::string&)) {
    if (!port) return;
    const std::string& address = m_device.options().udp_listen;
    try {
        server = std::make_unique<UdpServer>(m_context, asio::ip::udp::endpoint(address_of(address), *port),
                                             [this, handler](Bytes input, const std::string& peer) {
                                                 return handler(m_device.exchange(), input, peer);
                                             });
    } catch (const EndpointError& error) {
        throw std::runtime_error("cannot listen on UDP " + error.endpoint + ": " + error.code().message());
    }
}

// Programs change the screen without being asked to.
void Ports::tick() {
    Milliseconds wait = std::chrono::seconds(1);
    try {
        wait = m_device.exchange().tick();
    } catch (const std::bad_alloc&) { // a later picture may find room again
    }
    m_timer.expires_after(wait);
    m_timer.async_wait([this](NetworkError error) {
        if (!error) tick();
    });
}

} // namespace qm::sim
