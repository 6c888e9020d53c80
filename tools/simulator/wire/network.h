// Sockets and timers, by the names that the simulator uses.
#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/asio/ip/udp.hpp>
#include <boost/asio/steady_timer.hpp>
#include <boost/system/system_error.hpp>
#include <string>
#include <system_error>

namespace qm::sim {

namespace asio = boost::asio;
using NetworkError = boost::system::error_code;

// Address and port, such as 127.0.0.1:5005.
template <class Endpoint> [[nodiscard]] std::string text_of(const Endpoint& endpoint) {
    return endpoint.address().to_string() + ":" + std::to_string(endpoint.port());
}

// An address and port that cannot be had.
struct EndpointError : std::system_error {
    EndpointError(std::string where, std::error_code code)
        : std::system_error(code, "cannot listen on " + where), endpoint(std::move(where)) {}

    std::string endpoint;
};

// A socket at the endpoint, listening when it accepts connections; throws EndpointError.
template <class Socket, class Endpoint>
[[nodiscard]] Socket socket_at(asio::io_context& context, const Endpoint& endpoint) try {
    return Socket(context, endpoint);
} catch (const boost::system::system_error& error) {
    throw EndpointError(text_of(endpoint), {error.code().value(), std::system_category()});
}

} // namespace qm::sim
