// Sockets and timers, by the names that the simulator uses.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ip/udp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/system/system_error.hpp>
#include <system_error>

namespace qm::sim {

namespace asio = boost::asio;
using NetworkError = boost::system::error_code;

// A socket at the endpoint, listening when it accepts connections; throws std::system_error when the endpoint
// cannot be had.
template <class Socket, class Endpoint>
[[nodiscard]] Socket socket_at(asio::io_context& context, const Endpoint& endpoint) try {
    return Socket(context, endpoint);
} catch (const boost::system::system_error& error) {
    throw std::system_error(error.code().value(), std::system_category());
}

} // namespace qm::sim
