// The simulator's page, served in the caller's own thread: one connection at a time, on 127.0.0.1.
#pragma once

#include "require.h"
#include "simulator/web/HttpSession.h"

#include <boost/asio/read.hpp>
#include <boost/asio/write.hpp>

namespace qm::sim {

class WebPage {
  public:
    static inline const std::string kPlace = "127.0.0.1:5080"; // that it believes to be, whatever its port

    WebPage() {
        m_site.place = kPlace;
        Exchange& exchange = m_fleet.device(0).exchange();
        m_site.feeds.push_back(std::make_unique<Feed>(m_context, exchange, 0));
        // A log that is full grows no more, which would look like a leak.
        for (std::size_t i = 0; i < RequestLog::kEntries; ++i) exchange.switch_screen(true, "");
    }

    // How often somebody changed something.
    [[nodiscard]] std::uint64_t changes() const { return m_fleet.device(0).exchange().log().latest(); }
    [[nodiscard]] std::string port() const { return std::to_string(m_acceptor.local_endpoint().port()); }

    // What is answered to the bytes, behind which nothing comes. The connection must end soon.
    std::string answer_to(const std::string& bytes) {
        asio::ip::tcp::socket client(m_context);
        client.connect(m_acceptor.local_endpoint());
        auto socket = m_acceptor.accept(); // others of this machine may come by
        for (NetworkError gone; socket.remote_endpoint(gone) != client.local_endpoint();)
            socket = m_acceptor.accept();
        start_http_session(std::move(socket), m_site, m_site.seats.take());
        std::string answer;
        int waiting = 2;
        asio::async_write(client, asio::buffer(bytes), [&](NetworkError ignored, std::size_t) {
            --waiting;
            client.shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
        });
        asio::async_read(client, asio::dynamic_buffer(answer), [&](NetworkError, std::size_t) { --waiting; });
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds(5);
        while (waiting > 0 || m_site.seats.seat.use_count() > 1) {
            fuzz::require(std::chrono::steady_clock::now() < limit);
            m_context.restart();
            m_context.run_one_until(limit);
        }
        return answer;
    }

  private:
    Fleet m_fleet{{{.width = 16, .height = 8, .keeps_log = true}}};
    Site m_site{m_fleet}; // outlives the context, in which its connections live
    asio::io_context m_context{1};
    asio::ip::tcp::acceptor m_acceptor{m_context, {asio::ip::address_v4::loopback(), 0}};
};

} // namespace qm::sim
