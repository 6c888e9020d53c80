#include "CuttingRelay.h"

#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>

namespace qm::test {
namespace {

constexpr timeval kPatience{2, 0};

Descriptor listening(Ouint16 port) {
    Descriptor fd(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    if (::bind(fd.get(), reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        throw std::runtime_error("cannot bind");
    return fd;
}

} // namespace

CuttingRelay::CuttingRelay(Ouint16 port, Ouint16 controller)
    : m_controller(connected_socket(SOCK_DGRAM, controller)), m_socket(listening(port)) {
    ::setsockopt(m_controller.get(), SOL_SOCKET, SO_RCVTIMEO, &kPatience, sizeof kPatience);
    m_thread = std::thread([this] { relay(); });
}

CuttingRelay::~CuttingRelay() {
    ::shutdown(m_socket.get(), SHUT_RDWR); // wakes the thread, though there is no connection
    m_thread.join();
}

void CuttingRelay::begin(std::optional<Cut> cut) {
    const std::lock_guard lock(m_mutex);
    m_lengths.clear();
    m_cut = cut;
}

std::vector<std::size_t> CuttingRelay::lengths() {
    const std::lock_guard lock(m_mutex);
    return m_lengths;
}

void CuttingRelay::relay() {
    Ouint8 bytes[65536];
    sockaddr_in from{};
    auto* const sender = reinterpret_cast<sockaddr*>(&from);
    for (;;) {
        socklen_t size = sizeof from;
        const ssize_t asked = ::recvfrom(m_socket.get(), bytes, sizeof bytes, 0, sender, &size);
        if (asked <= 0) return;
        ::send(m_controller.get(), bytes, static_cast<std::size_t>(asked), 0);
        const ssize_t answered = ::recv(m_controller.get(), bytes, sizeof bytes, 0);
        if (answered <= 0) continue;
        if (const auto length = length_sent(static_cast<std::size_t>(answered)))
            ::sendto(m_socket.get(), bytes, *length, 0, sender, size);
    }
}

// Nothing for an answer that is not to be sent.
std::optional<std::size_t> CuttingRelay::length_sent(std::size_t whole) {
    const std::lock_guard lock(m_mutex);
    const std::size_t number = m_lengths.size();
    m_lengths.push_back(whole);
    if (!m_cut || m_cut->answer != number) return whole;
    if (m_cut->after == After::silence) return std::nullopt;
    return m_cut->bytes;
}

} // namespace qm::test
