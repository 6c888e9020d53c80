#include "broadcast/BroadcastPeer.h"

#include "support/reason.h"

#include <arpa/inet.h>
#include <cerrno>
#include <ifaddrs.h>
#include <memory>
#include <net/if.h>
#include <netinet/in.h>
#include <poll.h>
#include <string_view>
#include <sys/socket.h>
#include <thread>

namespace qm {
namespace {

constexpr std::chrono::seconds kAttempt{1};
constexpr std::chrono::milliseconds kRestBetweenCloses{10};
constexpr int kMostPending = 1000; // datagrams, in case somebody sends without end
constexpr std::ptrdiff_t kShortestFrame = 15;

sockaddr_in address_of(in_addr_t ip, Ouint16 port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = ip;
    address.sin_port = htons(port);
    return address;
}

template <class Value> void set_option(int fd, int level, int name, Value value) {
    ::setsockopt(fd, level, name, &value, sizeof value);
}

int cannot_receive(int error) {
    return fail(QM_FAILED, "The answer cannot be received: %s.", error_text(error));
}

// The first socket that has a datagram before the deadline, or -1.
int readable_socket(const std::vector<Descriptor>& sockets, Clock::time_point deadline) {
    std::vector<pollfd> entries;
    entries.reserve(sockets.size());
    for (const Descriptor& socket : sockets) entries.push_back({socket.get(), POLLIN, 0});
    const int waiting = wait_any(entries, deadline);
    if (waiting < 0) (void)cannot_receive(errno);
    if (waiting <= 0) return -1;
    const auto ready =
        std::find_if(entries.begin(), entries.end(), [](const pollfd& e) { return e.revents != 0; });
    return ready == entries.end() ? -1 : ready->fd;
}

} // namespace

BroadcastPeer::BroadcastPeer() {
    static std::mutex broadcasts;
    m_turn = std::unique_lock(broadcasts);
}

int BroadcastPeer::GetIpList() {
    ifaddrs* first = nullptr;
    if (::getifaddrs(&first) != 0) {
        (void)(errno == ENOMEM ? fail_by_memory()
                               : fail(QM_FAILED, "The host's network interfaces cannot be listed: %s.",
                                      error_text(errno)));
        return QM_OK;
    }
    const std::unique_ptr<ifaddrs, decltype(&::freeifaddrs)> list(first, ::freeifaddrs);
    for (const ifaddrs* entry = first; entry; entry = entry->ifa_next) {
        if (!entry->ifa_addr || entry->ifa_addr->sa_family != AF_INET) continue;
        sockaddr_in address{};
        std::memcpy(&address, entry->ifa_addr, sizeof address);
        char text[INET_ADDRSTRLEN];
        ::inet_ntop(AF_INET, &address.sin_addr, text, sizeof text);
        if (std::string_view(text) == "127.0.0.1") continue;
        vecIp.emplace_back(text);
        vecNet.emplace_back(entry->ifa_name);
    }
    return QM_OK;
}

int BroadcastPeer::InitUdp(const char* address, Ouint16 remotePort, Ouint16 localPort) {
    Close();
    BroadIp.clear();
    vecIp.clear();
    vecNet.clear();
    GetIpList();
    BroadIp += address;
    BroadPort = remotePort;
    LocalPort = localPort;
    for (const std::string& interface : vecNet)
        if (const int code = open_socket(::if_nametoindex(interface.c_str())); code != QM_OK) return code;
    return QM_OK;
}

int BroadcastPeer::open_socket(unsigned interface) {
    Descriptor socket(::socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0));
    if (!socket) return fail(QM_FAILED, "No socket can be had: %s.", error_text(errno));
    set_option(socket.get(), SOL_SOCKET, SO_BROADCAST, 1);
    set_option(socket.get(), SOL_SOCKET, SO_REUSEADDR, 1);
    // The limited broadcast leaves by one interface only; each socket has its own.
    set_option(socket.get(), IPPROTO_IP, IP_UNICAST_IF, htonl(interface));
    const sockaddr_in local = address_of(htonl(INADDR_ANY), LocalPort);
    (void)::bind(socket.get(), reinterpret_cast<const sockaddr*>(&local), sizeof local);
    SocketList.push_back(std::move(socket));
    return QM_OK;
}

// What still lies there answers an earlier command: another controller's, or the same one's by another way.
void BroadcastPeer::discard_pending() {
    Ouint8 byte;
    for (const Descriptor& socket : SocketList)
        for (int i = 0; i < kMostPending && ::recv(socket.get(), &byte, 1, MSG_DONTWAIT) >= 0; ++i) {
        }
}

int BroadcastPeer::Send(const Ouint8* data, int len) {
    discard_pending();
    if (SocketList.empty()) (void)fail(QM_FAILED, "The host has no network interface to broadcast on.");
    const sockaddr_in to = address_of(::inet_addr(BroadIp.c_str()), BroadPort);
    int error = 0;
    const auto sent = std::ranges::count_if(SocketList, [&](const Descriptor& socket) {
        const auto bytes = ::sendto(socket.get(), data, static_cast<std::size_t>(len), MSG_NOSIGNAL,
                                    reinterpret_cast<const sockaddr*>(&to), sizeof to);
        if (bytes < 0) error = errno;
        return bytes >= 0;
    });
    if (sent == 0) (void)fail(QM_FAILED, "No broadcast could be sent: %s.", error_text(error));
    return QM_OK;
}

int BroadcastPeer::Recv(Ouint8* buff, int& dataLen, int attempts) {
    std::ranges::fill(remoteIP, '\0');
    const auto deadline = Clock::now() + attempts * kAttempt;
    do {
        const int socket = readable_socket(SocketList, deadline);
        if (socket < 0) break;
        if (const auto code = receive_from(socket, buff, dataLen)) return *code;
    } while (Clock::now() < deadline);
    dataLen = 0;
    return QM_OK;
}

// Nothing when the datagram turned out to be spoilt and was thrown away.
std::optional<int> BroadcastPeer::receive_from(int socket, Ouint8* buff, int& dataLen) {
    sockaddr_in from{};
    socklen_t size = sizeof from;
    const auto received = ::recvfrom(socket, buff, static_cast<std::size_t>(dataLen), MSG_DONTWAIT,
                                     reinterpret_cast<sockaddr*>(&from), &size);
    if (received < 0 && (errno == EAGAIN || errno == EINTR)) return std::nullopt;
    dataLen = 0;
    if (received < 0) return cannot_receive(errno);
    if (received < kShortestFrame && !says_ok({buff, static_cast<std::size_t>(received)}))
        return fail(QM_FAILED, "The answer of %zd bytes is too short.", received);
    ::inet_ntop(AF_INET, &from.sin_addr, remoteIP, sizeof remoteIP);
    dataLen = static_cast<int>(received);
    return QM_OK;
}

int BroadcastPeer::get_ipAdder(Ouint8 out[20]) const {
    std::memcpy(out, remoteIP, sizeof remoteIP);
    return QM_OK;
}

void BroadcastPeer::Close() {
    for (Descriptor& socket : SocketList) {
        socket.reset();
        std::this_thread::sleep_for(kRestBetweenCloses);
    }
    SocketList.clear();
}

} // namespace qm
