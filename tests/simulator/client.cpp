#include "client.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>

namespace qm::sim::test {
namespace {

constexpr std::chrono::seconds kLimit{10};

} // namespace

Client::Client(std::uint16_t port) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(m_socket.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
}

void Client::send(Bytes bytes) {
    while (!bytes.empty()) {
        const ssize_t sent = ::send(m_socket.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL);
        ASSERT_GT(sent, 0);
        bytes = bytes.subspan(static_cast<std::size_t>(sent));
    }
}

ByteBuffer Client::receive() {
    ByteBuffer received;
    Ouint8 byte = 0;
    const auto deadline = Clock::now() + kLimit;
    while (wait_ready(m_socket.get(), POLLIN, deadline) > 0 && ::recv(m_socket.get(), &byte, 1, 0) == 1) {
        received.push_back(byte);
        if (byte == 0x5A) break;
    }
    return received;
}

Client::End Client::wait_for_end() {
    if (wait_ready(m_socket.get(), POLLIN, Clock::now() + kLimit) == 0) return End::none;
    Ouint8 byte = 0;
    const ssize_t count = ::recv(m_socket.get(), &byte, 1, 0);
    if (count == 0) return End::closed;
    return count < 0 && errno == ECONNRESET ? End::reset : End::none;
}

} // namespace qm::sim::test
