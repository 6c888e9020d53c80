// The page with the controllers' screens, and what scripts ask for, over HTTP. It has a thread of its own, so
// that readers never hold up the controllers.
#pragma once

#include "simulator/web/Site.h"
#include "simulator/wire/Server.h"

#include <thread>

namespace qm::sim {

class WebServer {
  public:
    // Listens when it returns; throws EndpointError, or std::invalid_argument for an address that is none.
    // The fleet outlives it.
    WebServer(const std::string& address, std::uint16_t port, Fleet& fleet);
    WebServer(const WebServer&) = delete;
    WebServer& operator=(const WebServer&) = delete;
    // Ends every connection and joins the thread.
    ~WebServer();

    // ADDRESS:PORT
    [[nodiscard]] const std::string& place() const { return m_site.place; }

  private:
    void take(asio::ip::tcp::socket socket);
    void run();

    // The order counts: the context, in which the connections live, goes before what they use.
    Site m_site;
    asio::io_context m_context{1};
    Server m_server;
    std::thread m_thread;
};

} // namespace qm::sim
