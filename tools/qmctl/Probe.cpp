#include "Probe.h"

#include "record_text.h"

#include <arpa/inet.h>
#include <array>
#include <cerrno>
#include <cstring>
#include <ifaddrs.h>
#include <memory>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

namespace qm::ctl {
namespace {

constexpr timeval kTimeout{3, 0};

// The ping that every connection begins with, in its frame; its number is 2.
constexpr std::array<unsigned char, 28> kHandshake{0xA5, 0xA5, 0xA5, 0xA5, 0xA5, 0xA5, 0xA5, 0xA5, 0xFE, 0xFF,
                                                   0x00, 0x80, 0x00, 0x00, 0xFE, 0x01, 0x02, 0x00, 0x04, 0x00,
                                                   0x23, 0xB8, 0xE3, 0xA2, 0x00, 0x00, 0x00, 0x5A};

[[noreturn]] void fail(const std::string& what, int error) {
    throw std::runtime_error(what + ": " + std::strerror(error) + ".");
}

sockaddr_in address_of(const Controller& to) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(to.port());
    ::inet_pton(AF_INET, to.ip().c_str(), &address.sin_addr);
    return address;
}

template <class Call> int on_address(Call call, int socket, const sockaddr_in& address) {
    return call(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address);
}

std::string text_of(const in_addr& address) {
    std::array<char, INET_ADDRSTRLEN> text{};
    ::inet_ntop(AF_INET, &address, text.data(), text.size());
    return text.data();
}

// The interface with an address of this host's; empty when there is none.
std::string interface_of(const in_addr& address) {
    ifaddrs* list = nullptr;
    if (::getifaddrs(&list) != 0) return "";
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> all(list, ::freeifaddrs);
    for (const ifaddrs* one = list; one; one = one->ifa_next) {
        if (!one->ifa_addr || one->ifa_addr->sa_family != AF_INET) continue;
        const auto* its = reinterpret_cast<const sockaddr_in*>(one->ifa_addr);
        if (its->sin_addr.s_addr == address.s_addr) return one->ifa_name;
    }
    return "";
}

} // namespace

Probe::~Probe() { close(); }

void Probe::close() {
    if (m_socket >= 0) ::close(m_socket);
    m_socket = -1;
}

std::string Probe::route() const {
    const int socket = ::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    sockaddr_in from{};
    socklen_t size = sizeof from;
    const bool found = socket >= 0 && on_address(::connect, socket, address_of(m_to)) == 0 &&
                       ::getsockname(socket, reinterpret_cast<sockaddr*>(&from), &size) == 0;
    const int error = errno;
    if (socket >= 0) ::close(socket);
    if (!found) fail("No way leads from this host to " + m_to.ip(), error);
    const std::string interface = interface_of(from.sin_addr);
    return m_to.ip() + ", from " + text_of(from.sin_addr) + (interface.empty() ? "" : " on " + interface);
}

std::string Probe::connect() {
    const std::string what = "Connecting to " + m_to.address();
    m_socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    if (m_socket < 0) fail(what + " failed", errno);
    for (const int direction : {SO_SNDTIMEO, SO_RCVTIMEO})
        ::setsockopt(m_socket, SOL_SOCKET, direction, &kTimeout, sizeof kTimeout);
    const int error = on_address(::connect, m_socket, address_of(m_to)) == 0 ? 0 : errno;
    if (error == ECONNREFUSED) throw std::runtime_error(what + " was refused.");
    if (error == EINPROGRESS || error == ETIMEDOUT) // the former when our time is up
        throw std::runtime_error(what + " got no answer within 3 s.");
    if (error != 0) fail(what + " failed", error);
    return std::to_string(m_to.port()) + " is open";
}

std::string Probe::shake_hands() {
    std::array<unsigned char, 64> answer{};
    const bool sent =
        TEMP_FAILURE_RETRY(::send(m_socket, kHandshake.data(), kHandshake.size(), MSG_NOSIGNAL)) > 0;
    const ssize_t size =
        sent ? TEMP_FAILURE_RETRY(::recv(m_socket, answer.data(), answer.size(), 0)) : ssize_t{-1};
    const int error = size < 0 ? errno : 0;
    close();
    if (error == EAGAIN) throw std::runtime_error("It is connected, but was silent for 3 s.");
    if (error != 0) fail("The connection broke", error);
    if (size == 0) throw std::runtime_error("The connection was closed without an answer.");
    if (answer[0] != kHandshake[0]) {
        const Octets first(answer.data(), static_cast<std::size_t>(std::min<ssize_t>(size, 8)));
        throw std::runtime_error("The answer is not a controller's; it begins with " + hex(first, " ") + ".");
    }
    return "answered";
}

} // namespace qm::ctl
