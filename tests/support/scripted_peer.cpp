#include "scripted_peer.h"

#include <algorithm>
#include <cerrno>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>

namespace qm::test {
namespace {

constexpr timeval kReadLimit{10, 0};

sockaddr* as_address(sockaddr_in& address) { return reinterpret_cast<sockaddr*>(&address); }

} // namespace

PeerConnection::PeerConnection(Descriptor fd) : m_fd(std::move(fd)) {
    ::setsockopt(m_fd.get(), SOL_SOCKET, SO_RCVTIMEO, &kReadLimit, sizeof kReadLimit);
}

ByteBuffer PeerConnection::read_frame() {
    ByteBuffer frame;
    Ouint8 chunk[4096];
    while (frame.empty() || frame.back() != 0x5A) {
        const ssize_t waiting = ::recv(m_fd.get(), chunk, sizeof chunk, MSG_PEEK);
        if (waiting <= 0) break;
        const auto* const end = std::find(chunk, chunk + waiting, 0x5A);
        const auto wanted = std::min(end - chunk + 1, waiting);
        frame.insert(frame.end(), chunk,
                     chunk + ::recv(m_fd.get(), chunk, static_cast<std::size_t>(wanted), 0));
    }
    return frame;
}

ByteBuffer PeerConnection::read_all() {
    ByteBuffer all;
    Ouint8 chunk[4096];
    for (ssize_t n; (n = ::recv(m_fd.get(), chunk, sizeof chunk, 0)) > 0;)
        all.insert(all.end(), chunk, chunk + n);
    return all;
}

void PeerConnection::send(Bytes bytes) { ::send(m_fd.get(), bytes.data(), bytes.size(), MSG_NOSIGNAL); }

PeerConnection::End PeerConnection::wait_for_end() {
    Ouint8 byte = 0;
    const ssize_t count = ::recv(m_fd.get(), &byte, 1, 0);
    if (count == 0) return End::closed;
    return count < 0 && errno == ECONNRESET ? End::reset : End::none;
}

void PeerConnection::reset() {
    const linger at_once{1, 0};
    ::setsockopt(m_fd.get(), SOL_SOCKET, SO_LINGER, &at_once, sizeof at_once);
    m_fd.reset();
}

ScriptedPeer::ScriptedPeer(Script script) : m_listener(bound_socket()), m_port(port_of(m_listener)) {
    if (::listen(m_listener.get(), 16) != 0) throw std::runtime_error("cannot listen");
    m_thread = std::thread([this, script = std::move(script)] { serve(script); });
}

void ScriptedPeer::serve(const Script& script) {
    for (;;) {
        Descriptor accepted(::accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
        if (!accepted && errno == EINTR) continue;
        if (!accepted) return;
        PeerConnection connection(std::move(accepted));
        script(connection);
    }
}

void ScriptedPeer::join() {
    ::shutdown(m_listener.get(), SHUT_RDWR); // wakes the accept
    if (m_thread.joinable()) m_thread.join();
}

ScriptedPeer::Script ScriptedPeer::answering(std::vector<ByteBuffer> answers,
                                             std::vector<ByteBuffer>* requests) {
    return [answers = std::move(answers), requests](PeerConnection& client) {
        for (const ByteBuffer& answer : answers) {
            ByteBuffer request = client.read_frame();
            if (requests) requests->push_back(std::move(request));
            client.send(answer);
        }
        client.read_all();
    };
}

Descriptor bound_socket() {
    Descriptor fd(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (!fd || ::bind(fd.get(), as_address(address), sizeof address) != 0)
        throw std::runtime_error("cannot bind");
    return fd;
}

Descriptor connected_socket(int type, Ouint16 port) {
    Descriptor fd(::socket(AF_INET, type | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (::connect(fd.get(), as_address(address), sizeof address) != 0)
        throw std::runtime_error("cannot connect");
    return fd;
}

Ouint16 port_of(const Descriptor& socket) {
    sockaddr_in address{};
    socklen_t size = sizeof address;
    ::getsockname(socket.get(), as_address(address), &size);
    return ntohs(address.sin_port);
}

} // namespace qm::test
