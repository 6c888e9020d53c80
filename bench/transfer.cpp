// Writing a file over a connection on loopback, beside bare sockets that exchange frames of the same sizes.
// The far end is the same for both: it looks for the end byte and sends an acknowledgement.
#include "acknowledging.h"
#include "compare.h"
#include "silence.h"

#include "support/Descriptor.h"
#include "tcpClient/TcpPeer.h"

#include <arpa/inet.h>
#include <memory>
#include <netinet/tcp.h>
#include <poll.h>
#include <sched.h>
#include <sys/socket.h>
#include <thread>

namespace qm::bench {
namespace {

constexpr std::size_t kFile = 1 << 20;
constexpr Ouint8 kEndByte = 0x5A;

// Keeps the calling thread, and those that it starts, on one processor. Each exchange changes threads twice,
// and from one processor to another that may take several times as long: without this, chance decides.
class OneProcessor {
  public:
    OneProcessor() {
        require(::sched_getaffinity(0, sizeof m_before, &m_before) == 0, "file transfer: no affinity");
        cpu_set_t one;
        CPU_ZERO(&one);
        int first = 0;
        while (!CPU_ISSET(first, &m_before)) ++first;
        CPU_SET(first, &one);
        require(::sched_setaffinity(0, sizeof one, &one) == 0, "file transfer: no affinity");
    }
    ~OneProcessor() { ::sched_setaffinity(0, sizeof m_before, &m_before); }
    OneProcessor(const OneProcessor&) = delete;
    OneProcessor& operator=(const OneProcessor&) = delete;

  private:
    cpu_set_t m_before{};
};

bool send_all(int socket, Bytes bytes) {
    return ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL) == static_cast<ssize_t>(bytes.size());
}

bool receive_all(int socket, std::span<Ouint8> bytes) {
    return ::recv(socket, bytes.data(), bytes.size(), MSG_WAITALL) == static_cast<ssize_t>(bytes.size());
}

// What is on the wire of one file: the sizes of its frames, and the answer to each.
struct Exchange {
    std::vector<std::size_t> frames;
    ByteBuffer answer;
};

// Answers on each connection, in a thread of its own, until the connection ends.
class FarEnd {
  public:
    explicit FarEnd(ByteBuffer answer)
        : m_answer(std::move(answer)), m_listener(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        auto* any = reinterpret_cast<sockaddr*>(&address);
        require(::bind(m_listener.get(), any, size) == 0 && ::listen(m_listener.get(), 1) == 0 &&
                    ::getsockname(m_listener.get(), any, &size) == 0,
                "file transfer: cannot listen");
        m_port = ntohs(address.sin_port);
    }
    ~FarEnd() {
        for (std::thread& thread : m_threads) thread.join();
    }
    FarEnd(const FarEnd&) = delete;
    FarEnd& operator=(const FarEnd&) = delete;

    [[nodiscard]] Ouint16 port() const { return m_port; }
    // Takes the connection that has been made.
    void accept() {
        Descriptor socket(::accept4(m_listener.get(), nullptr, nullptr, SOCK_CLOEXEC));
        require(static_cast<bool>(socket), "file transfer: no connection");
        m_threads.emplace_back([this, taken = std::move(socket)] { answer(taken.get()); });
    }

  private:
    void answer(int socket) const {
        const int on = 1;
        ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        ByteBuffer frame(1 << 16);
        for (ssize_t got; (got = ::recv(socket, frame.data(), frame.size(), 0)) > 0;)
            if (frame[static_cast<std::size_t>(got - 1)] == kEndByte && !send_all(socket, m_answer)) return;
    }

    ByteBuffer m_answer;
    Descriptor m_listener;
    Ouint16 m_port = 0;
    std::vector<std::thread> m_threads;
};

// A connection of the library, past its handshake.
class Connected : public TcpPeer {
  public:
    explicit Connected(FarEnd& to) {
        require(Connect("127.0.0.1", to.port(), 3) == QM_OK, "file transfer: not connected");
        to.accept();
        m_DeviceType = kAcknowledgingType;
    }
};

class BareSocket {
  public:
    explicit BareSocket(FarEnd& to) : m_socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        address.sin_port = htons(to.port());
        require(::connect(m_socket.get(), reinterpret_cast<sockaddr*>(&address), sizeof address) == 0,
                "file transfer: bare socket not connected");
        const int on = 1;
        ::setsockopt(m_socket.get(), IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
        to.accept();
    }
    // Waits: with a time-out before each send and receive, as the library has to.
    void run(const Exchange& exchange, bool waits) {
        for (const std::size_t size : exchange.frames) {
            const bool sent =
                (!waits || ready(POLLOUT)) && send_all(m_socket.get(), std::span(m_bytes).last(size));
            require(sent && (!waits || ready(POLLIN)) &&
                        receive_all(m_socket.get(), std::span(m_bytes).first(exchange.answer.size())),
                    "file transfer: bare exchange failed");
        }
    }

  private:
    [[nodiscard]] bool ready(short event) const {
        pollfd entry{m_socket.get(), static_cast<short>(event | POLLPRI), 0};
        return ::poll(&entry, 1, 3000) == 1 && entry.revents == event;
    }

    Descriptor m_socket;
    ByteBuffer m_bytes = [] {
        ByteBuffer bytes(1 << 16);
        bytes.back() = kEndByte;
        return bytes;
    }();
};

// Both ends; the far one goes last, for it waits until the connections have ended.
struct Loopback {
    explicit Loopback(const Exchange& what)
        : exchange(what), farEnd(what.answer), ours(farEnd), bare(farEnd) {}

    Exchange exchange;
    FarEnd farEnd;
    Connected ours;
    BareSocket bare;
};

int write(ON_command& controller, const ByteBuffer& content) {
    const Silence silence;
    return controller.hv_cmd_ofs_writeFile({"F001", 0, 1, content});
}

} // namespace

void transfer() {
    const auto content = std::make_shared<const ByteBuffer>(random_bytes(kFile));
    Acknowledging recorder;
    require(write(recorder, *content) == QM_OK, "file transfer: refused");
    require(recorder.frames().size() == kFile / packet_len() + 1, "file transfer: frames are missing");

    const OneProcessor setUp; // of the far end's threads
    const auto loopback = std::make_shared<Loopback>(Exchange{recorder.frames(), recorder.answer()});
    const auto send = [=] {
        const OneProcessor both;
        require(write(loopback->ours, *content) == QM_OK, "file transfer: refused");
    };
    send();
    const auto bare = [=](bool waits) {
        return [=] {
            const OneProcessor both;
            loopback->bare.run(loopback->exchange, waits);
        };
    };
    compare_time("1 MiB file in blocks of 1,024, loopback", send,
                 {{"bare sockets with time-outs, frames of the same sizes", bare(true), 1 / 1.2},
                  {"bare sockets, frames of the same sizes", bare(false), 1 / 1.2}});
}

} // namespace qm::bench
