#include "simulator/web/WebServer.h"

#include "simulator/web/HttpSession.h"

namespace qm::sim {
namespace {

asio::ip::tcp::endpoint endpoint_of(const std::string& address, std::uint16_t port) {
    NetworkError error;
    const auto parsed = asio::ip::make_address_v4(address, error);
    if (error) throw std::invalid_argument("the page's address must be a dotted IPv4 address");
    return {parsed, port};
}

} // namespace

WebServer::WebServer(const std::string& address, std::uint16_t port, Fleet& fleet)
    : m_site(fleet), m_server(m_context, endpoint_of(address, port),
                              [this](asio::ip::tcp::socket socket) { take(std::move(socket)); }) {
    m_site.place = text_of(m_server.endpoint());
    for (std::size_t i = 0; i < fleet.size(); ++i)
        m_site.feeds.push_back(std::make_unique<Feed>(m_context, fleet.device(i).exchange(), i));
    m_thread = std::thread([this] { run(); });
}

WebServer::~WebServer() {
    m_context.stop();
    m_thread.join();
    for (const auto& feed : m_site.feeds) feed->close();
}

void WebServer::take(asio::ip::tcp::socket socket) {
    if (auto seat = m_site.seats.take())
        start_http_session(std::move(socket), m_site, std::move(seat));
    else if (auto place = m_site.doorway.take())
        turn_away(std::move(socket), m_site, std::move(place));
}

// A connection that could not go on is gone by the time its exception arrives here; the others go on.
void WebServer::run() {
    while (!m_context.stopped()) try {
            m_context.run();
        } catch (const std::exception&) {
        }
}

} // namespace qm::sim
