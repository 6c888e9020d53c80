#include "tcpClient/TcpPeer.h"

#include "support/message.h"
#include "support/reason.h"

#include <arpa/inet.h>
#include <cerrno>
#include <fcntl.h>
#include <netinet/tcp.h>
#include <optional>
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

int pending_error(int fd) {
    int error = 0;
    socklen_t size = sizeof error;
    return ::getsockopt(fd, SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error : errno;
}

int no_socket() { return fail(QM_FAILED, "No socket can be had: %s.", error_text(errno)); }

int not_connected() { return fail(QM_FAILED, "There is no connection to the controller."); }

int urgent_data() { return fail(QM_FAILED, "Urgent data came, which no controller sends."); }

// How the peer ended the connection, by the error of its socket; 0: it sends no more. Null when it did not.
const char* end_of_connection(int error) {
    if (error == 0 || error == EPIPE) return "was closed";
    return error == ECONNRESET ? "was reset" : nullptr;
}

int not_sent(int error) {
    if (is_transient(error)) return fail(QM_FAILED, "The controller did not take the request within 3 s.");
    if (const char* end = end_of_connection(error))
        return fail(QM_FAILED, "The connection %s before the controller had taken the request.", end);
    return fail(QM_FAILED, "The request cannot be sent: %s.", error_text(error));
}

int not_received(int error) {
    return fail(QM_FAILED, "The answer cannot be received: %s.", error_text(error));
}

int silent(int seconds) {
    return fail(QM_FAILED, "The controller is connected, but was silent for %d s.", seconds);
}

int broken_off(int error, std::size_t received) {
    const char* end = end_of_connection(error);
    if (!end) return not_received(error);
    return fail(QM_FAILED, "The connection %s after %zu bytes of the answer.", end, received);
}

// Whether the peer has ended the connection by now, and nothing more can come.
std::optional<int> ended(int fd) {
    Ouint8 next;
    const auto waiting = ::recv(fd, &next, 1, MSG_PEEK | MSG_DONTWAIT);
    if (waiting == 0) return 0;
    if (waiting < 0 && !is_transient(errno)) return errno;
    return std::nullopt;
}

} // namespace

// Leaves the connection made or in progress, on a non-blocking socket.
int TcpPeer::start_connect(const char* ip, Ouint16 port) {
    m_Socket = Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    if (!m_Socket) return no_socket();
    // Connections to different controllers may share a port, which bind would have to search for among all
    // that are in use or were within the last minute: thousands, where there are thousands of controllers.
    const int on = 1;
    ::setsockopt(m_Socket.get(), IPPROTO_IP, IP_BIND_ADDRESS_NO_PORT, &on, sizeof on);
    const sockaddr_in local = address(htonl(INADDR_ANY), 0);
    if (::bind(m_Socket.get(), reinterpret_cast<const sockaddr*>(&local), sizeof local) != 0) {
        (void)no_socket();
        Close();
        return QM_FAILED;
    }
    // A frame sent in pieces must not wait for the peer's delayed acknowledgement.
    ::setsockopt(m_Socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    if (!set_blocking(m_Socket.get(), false)) return no_socket();

    m_To = address(::inet_addr(ip), port);
    if (m_To.sin_addr.s_addr == INADDR_NONE) {
        say("TCP connect failed\n");
        return fail(QM_FAILED, "\"%s\" is not the dotted IPv4 address of a controller.", last_part(ip));
    }
    if (connect_to(m_Socket.get(), m_To) != 0 && errno != EINPROGRESS) {
        (void)cannot_connect(errno, kTimeout);
        say("TCP connect failed\n");
        return QM_FAILED;
    }
    return QM_OK;
}

int TcpPeer::cannot_connect(int error, int seconds) {
    char ip[INET_ADDRSTRLEN] = {};
    ::inet_ntop(AF_INET, &m_To.sin_addr, ip, sizeof ip);
    const int port = ntohs(m_To.sin_port);
    if (error == ECONNREFUSED) return fail(QM_FAILED, "Connecting to %s:%d was refused.", ip, port);
    if (error == ETIMEDOUT)
        return fail(QM_FAILED, "No answer from %s:%d to connecting in %d s.", ip, port, seconds);
    if (error == ENETUNREACH || error == EHOSTUNREACH)
        return fail(QM_FAILED, "There is no route to %s:%d (%s).", ip, port, error_text(error));
    return fail(QM_FAILED, "Connecting to %s:%d failed (%s).", ip, port, error_text(error));
}

int TcpPeer::finish_connect(int iTimeout) {
    const auto deadline = Clock::now() + std::chrono::seconds(iTimeout);
    if (const int ready = wait_ready(m_Socket.get(), POLLOUT | POLLPRI, deadline); ready <= 0) {
        (void)cannot_connect(ready < 0 ? errno : ETIMEDOUT, iTimeout);
        say("TCP connect to select failed\n");
        Close();
        return QM_FAILED;
    }
    if (const int error = pending_error(m_Socket.get()); error != 0) {
        say("TCP connect to select to FD_ISSET failed\n");
        Close();
        return cannot_connect(error, iTimeout);
    }
    return set_blocking(m_Socket.get(), true) ? QM_OK : no_socket();
}

int TcpPeer::Connect(const char* ip, Ouint16 port, int iTimeout) {
    if (const int code = start_connect(ip, port); code != 0) return code;
    if (const int code = finish_connect(iTimeout); code != 0) return code;
    std::this_thread::sleep_for(kRestAfterConnect);
    return QM_OK;
}

int TcpPeer::Send(const Ouint8* data, int len) {
    if (!m_Socket || len <= 0) return not_connected();
    const auto deadline = Clock::now() + kSendTimeout;
    while (len > 0) {
        const int ready = wait_writable(m_Socket.get(), deadline);
        if (ready <= 0) return not_sent(ready < 0 ? errno : EAGAIN);
        if (ready & kExceptions) {
            const int error = pending_error(m_Socket.get());
            Close();
            return error == 0 ? urgent_data() : not_sent(error);
        }
        const auto sent =
            ::send(m_Socket.get(), data, static_cast<std::size_t>(len), MSG_NOSIGNAL | MSG_DONTWAIT);
        if (sent < 0 && is_transient(errno) && Clock::now() < deadline) continue;
        if (sent <= 0) {
            (void)not_sent(errno);
            Close();
            return QM_FAILED;
        }
        data += sent;
        len -= static_cast<int>(sent);
    }
    return QM_OK;
}

int TcpPeer::Recv(Ouint8* buff, int& dataLen, int iTimeout) {
    if (!m_Socket) return not_connected();
    const auto deadline = Clock::now() + std::chrono::seconds(iTimeout);
    for (;;) {
        const int ready = wait_ready(m_Socket.get(), POLLIN | POLLPRI, deadline);
        if (ready <= 0) return ready < 0 ? not_received(errno) : silent(iTimeout);
        if (ready & (POLLPRI | POLLNVAL)) {
            Close();
            return urgent_data();
        }
        const auto received = ::recv(m_Socket.get(), buff, static_cast<std::size_t>(dataLen), MSG_DONTWAIT);
        if (received < 0 && is_transient(errno)) {
            if (Clock::now() < deadline) continue;
            return silent(iTimeout);
        }
        if (received < 1) return broken_off(received == 0 ? 0 : errno, 0);
        const Bytes answer(buff, static_cast<std::size_t>(received));
        const bool full = received == dataLen;
        dataLen = static_cast<int>(received);
        return answer.back() == end_flag ? QM_OK : refuse_answer(answer, full);
    }
}

// What came has no end, because it is none, is longer than there is room for, or did not come whole.
int TcpPeer::refuse_answer(Bytes answer, bool full) {
    if (answer.front() != begin_flag) return refuse(answer);
    if (full) return fail(QM_FAILED, "The answer is longer than %zu bytes.", answer.size());
    if (const auto error = ended(m_Socket.get())) return broken_off(*error, answer.size());
    return refuse(answer);
}

void TcpPeer::Close() {
    if (!m_Socket) return;
    ::shutdown(m_Socket.get(), SHUT_RDWR);
    m_Socket.reset();
    std::this_thread::sleep_for(kRestAfterClose);
}

} // namespace qm
