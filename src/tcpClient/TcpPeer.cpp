#include "tcpClient/TcpPeer.h"

#include "support/message.h"

#include <arpa/inet.h>
#include <cerrno>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <thread>

namespace qm {
namespace {

constexpr std::chrono::seconds kSendTimeout{3};
constexpr std::chrono::milliseconds kRestAfterConnect{5}, kRestAfterClose{10};
constexpr short kExceptions = POLLPRI | POLLERR | POLLNVAL;

sockaddr_in address(in_addr_t ip, Ouint16 port) {
    sockaddr_in to{};
    to.sin_family = AF_INET;
    to.sin_addr.s_addr = ip;
    to.sin_port = htons(port);
    return to;
}

int connect_to(int fd, const sockaddr_in& to) {
    return ::connect(fd, reinterpret_cast<const sockaddr*>(&to), sizeof to);
}

bool set_blocking(int fd, bool blocking) {
    const int flags = ::fcntl(fd, F_GETFL);
    if (flags < 0) return false;
    return ::fcntl(fd, F_SETFL, blocking ? flags & ~O_NONBLOCK : flags | O_NONBLOCK) == 0;
}

// Ready, and yet not: a signal, or a packet that was thrown away.
bool is_transient(int error) { return error == EINTR || error == EAGAIN; }

// A peer that has answered is ready for the next request; to ask without waiting takes half the time.
int wait_writable(int fd, Clock::time_point deadline) {
    pollfd entry{fd, POLLOUT | POLLPRI, 0};
    return ::poll(&entry, 1, 0) > 0 ? entry.revents : wait_ready(fd, entry.events, deadline);
}

bool has_pending_error(int fd) {
    int error = 0;
    socklen_t size = sizeof error;
    return ::getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &size) != 0 || error != 0;
}

} // namespace

// Leaves the connection made or in progress, on a non-blocking socket.
int TcpPeer::start_connect(const char* ip, Ouint16 port) {
    m_Socket = Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!m_Socket) return QM_FAILED;
    const sockaddr_in local = address(htonl(INADDR_ANY), 0);
    if (::bind(m_Socket.get(), reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0) {
        Close();
        return QM_FAILED;
    }
    // A frame sent in pieces must not wait for the peer's delayed acknowledgement.
    const int on = 1;
    ::setsockopt(m_Socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (!set_blocking(m_Socket.get(), false)) return QM_FAILED;

    const in_addr_t to = ::inet_addr(ip);
    if (to == INADDR_NONE || (connect_to(m_Socket.get(), address(to, port)) != 0 && errno != EINPROGRESS)) {
        say("TCP connect failed\n");
        return QM_FAILED;
    }
    return QM_OK;
}

int TcpPeer::finish_connect(int iTimeout) {
    const auto deadline = Clock::now() + std::chrono::seconds(iTimeout);
    if (wait_ready(m_Socket.get(), POLLOUT | POLLPRI, deadline) <= 0) {
        say("TCP connect to select failed\n");
        Close();
        return QM_FAILED;
    }
    if (has_pending_error(m_Socket.get())) {
        say("TCP connect to select to FD_ISSET failed\n");
        Close();
        return QM_FAILED;
    }
    return set_blocking(m_Socket.get(), true) ? QM_OK : QM_FAILED;
}

int TcpPeer::Connect(const char* ip, Ouint16 port, int iTimeout) {
    if (const int code = start_connect(ip, port); code != 0) return code;
    if (const int code = finish_connect(iTimeout); code != 0) return code;
    std::this_thread::sleep_for(kRestAfterConnect);
    return QM_OK;
}

int TcpPeer::Send(const Ouint8* data, int len) {
    if (!m_Socket || len <= 0) return QM_FAILED;
    const auto deadline = Clock::now() + kSendTimeout;
    while (len > 0) {
        const int ready = wait_writable(m_Socket.get(), deadline);
        if (ready <= 0) return QM_FAILED;
        if (ready & kExceptions) {
            Close();
            return QM_FAILED;
        }
        const auto sent =
            ::send(m_Socket.get(), data, static_cast<std::size_t>(len), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && is_transient(errno) && Clock::now() < deadline) continue;
        if (sent <= 0) {
            Close();
            return QM_FAILED;
        }
        data += sent;
        len -= static_cast<int>(sent);
    }
    return QM_OK;
}

int TcpPeer::Recv(Ouint8* buff, int& dataLen, int iTimeout) {
    if (!m_Socket) return QM_FAILED;
    const auto deadline = Clock::now() + std::chrono::seconds(iTimeout);
    for (;;) {
        const int ready = wait_ready(m_Socket.get(), POLLIN | POLLPRI, deadline);
        if (ready <= 0) return QM_FAILED;
        if (ready & (POLLPRI | POLLNVAL)) {
            Close();
            return QM_FAILED;
        }
        const auto received = ::recv(m_Socket.get(), buff, static_cast<std::size_t>(dataLen), MSG_DONTWAIT);
        if (received < 0 && is_transient(errno) && Clock::now() < deadline) continue;
        if (received < 1) return QM_FAILED;
        dataLen = static_cast<int>(received);
        return buff[received - 1] == end_flag ? QM_OK : QM_FAILED;
    }
}

void TcpPeer::Close() {
    if (!m_Socket) return;
    ::shutdown(m_Socket.get(), SHUT_RDWR);
    m_Socket.reset();
    std::this_thread::sleep_for(kRestAfterClose);
}

} // namespace qm
