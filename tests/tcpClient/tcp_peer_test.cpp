// A connection against a peer that misbehaves.
#include "hex.h"
#include "scripted_peer.h"
#include "support/reason.h"
#include "tcpClient/TcpPeer.h"

#include <chrono>
#include <fcntl.h>
#include <future>
#include <linux/sockios.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace qm::test {
namespace {

using namespace std::chrono_literals;

constexpr const char* kLoopback = "127.0.0.1";
const ByteBuffer kRequest = hex("A5 01 5A");

// Receives into a buffer of 8 bytes: the result, and the bytes that the peer's length covers.
struct Received {
    explicit Received(TcpPeer& peer, int timeout = 3) : bytes(8, 0xEE) {
        int length = 8;
        clear_reason();
        code = peer.Recv(bytes.data(), length, timeout);
        why = reason();
        bytes.resize(static_cast<std::size_t>(length));
    }
    ByteBuffer bytes;
    int code;
    std::string why;
};

std::string message_of_connect(const char* ip, Ouint16 port, int timeout, const std::string& why) {
    return printed_by([&] {
        TcpPeer peer;
        clear_reason();
        EXPECT_EQ(peer.Connect(ip, port, timeout), QM_FAILED);
        EXPECT_EQ(reason(), why);
        EXPECT_EQ(Received(peer).code, QM_FAILED);
    });
}

TEST(TcpConnect, RefusalIsToldFromSilence) {
    const auto address_of = [](const Descriptor& socket) {
        return "127.0.0.1:" + std::to_string(port_of(socket));
    };
    const Descriptor refusing = bound_socket();
    EXPECT_THAT(message_of_connect(kLoopback, port_of(refusing), 3,
                                   "Connecting to " + address_of(refusing) + " was refused."),
                testing::AnyOf("TCP connect to select to FD_ISSET failed\n", "TCP connect failed\n"));

    // A listener whose queue of one is full lets the next connection wait.
    const Descriptor busy = bound_socket();
    ASSERT_EQ(::listen(busy.get(), 0), 0);
    TcpPeer first;
    ASSERT_EQ(first.Connect(kLoopback, port_of(busy), 3), QM_OK);
    EXPECT_EQ(message_of_connect(kLoopback, port_of(busy), 0,
                                 "No answer from " + address_of(busy) + " to connecting in 0 s."),
              "TCP connect to select failed\n");
}

TEST(TcpConnect, TextThatIsNoAddressIsRefused) {
    for (const char* ip : {"", "controller", "256.0.0.1", "127.0.0.1.1"})
        EXPECT_EQ(
            message_of_connect(ip, 5005, 3,
                               "\"" + std::string(ip) + "\" is not the dotted IPv4 address of a controller."),
            "TCP connect failed\n")
            << ip;
}

// What a child process must not have, frames wait for, and thousands of connections search for.
TEST(TcpConnect, SocketHasItsOptions) {
    const Descriptor listener = bound_socket();
    ASSERT_EQ(::listen(listener.get(), 1), 0);
    const int next = Descriptor(::dup(listener.get())).get();
    TcpPeer peer;
    const auto begin = Clock::now();
    ASSERT_EQ(peer.Connect(kLoopback, port_of(listener), 3), QM_OK);
    EXPECT_GE(Clock::now() - begin, 5ms) << "the rest that controllers need";
    EXPECT_EQ(::fcntl(next, F_GETFD), FD_CLOEXEC);
    for (const auto& [level, option] :
         {std::pair{IPPROTO_TCP, TCP_NODELAY}, std::pair{IPPROTO_IP, IP_BIND_ADDRESS_NO_PORT}}) {
        int value = 0;
        socklen_t size = sizeof value;
        ASSERT_EQ(::getsockopt(next, level, option, &value, &size), 0);
        EXPECT_EQ(value, 1) << level << " " << option;
    }
}

TEST(TcpReceive, OneReadBringsTheWholeFrameOrNothing) {
    ScriptedPeer controller([](PeerConnection& client) {
        client.send(hex("A5 01"));
        client.read_frame(); // sent once the first segment has been seen
        client.send(hex("02 5A"));
        client.read_all();
    });
    TcpPeer peer;
    ASSERT_EQ(peer.Connect(kLoopback, controller.port(), 3), QM_OK);
    const Received first(peer);
    EXPECT_EQ(first.code, QM_FAILED);
    EXPECT_EQ(first.why, "The answer was cut at 2 bytes: its end is missing.");
    EXPECT_THAT(first.bytes, is_hex("A5 01"));
    EXPECT_EQ(peer.Send(kRequest.data(), 3), QM_OK);
    const Received second(peer);
    EXPECT_EQ(second.code, QM_OK);
    EXPECT_THAT(second.bytes, is_hex("02 5A")); // nothing was kept of the first
    EXPECT_EQ(Received(peer, 0).why, "The controller is connected, but was silent for 0 s.");
}

TEST(TcpReceive, ReasonTellsWhatCameInsteadOfAnAnswer) {
    const struct {
        const char* bytes;
        int flags; // with MSG_MORE the end of the connection comes in the same packet
        const char* why;
    } cases[] = {
        {"A5 01 02", MSG_MORE, "The connection was closed after 3 bytes of the answer."},
        {"A5*9", 0, "The answer is longer than 8 bytes."},
        {"48 54 54 50", MSG_MORE, "The answer is not a frame: its 4 bytes begin with 48 54 54 50."},
        {"", 0, "The connection was closed after 0 bytes of the answer."},
    };
    for (const auto& c : cases) {
        const ByteBuffer bytes = hex(c.bytes);
        ScriptedPeer controller(
            [&](PeerConnection& client) { ::send(client.fd(), bytes.data(), bytes.size(), c.flags); });
        TcpPeer peer;
        ASSERT_EQ(peer.Connect(kLoopback, controller.port(), 3), QM_OK);
        EXPECT_EQ(Received(peer).why, c.why);
    }
}

TEST(TcpReceive, ConnectionThatThePeerEndsFails) {
    const std::pair<ScriptedPeer::Script, const char*> endings[] = {
        {[](PeerConnection& client) { client.read_frame(); },
         "The connection was closed after 0 bytes of the answer."},
        {[](PeerConnection& client) {
             client.read_frame();
             client.reset();
         },
         "The connection was reset after 0 bytes of the answer."},
    };
    for (const auto& [ending, why] : endings) {
        ScriptedPeer controller(ending);
        TcpPeer peer;
        ASSERT_EQ(peer.Connect(kLoopback, controller.port(), 3), QM_OK);
        EXPECT_EQ(peer.Send(kRequest.data(), 0), QM_FAILED);
        EXPECT_EQ(peer.Send(kRequest.data(), 3), QM_OK);
        const Received answer(peer);
        EXPECT_EQ(answer.code, QM_FAILED);
        EXPECT_EQ(answer.why, why);
        controller.join();
        clear_reason();
        int taken = 0; // the first after a close may be
        while (taken < 10000 && peer.Send(kRequest.data(), 3) == QM_OK) ++taken;
        EXPECT_LT(taken, 10000) << why;
        EXPECT_STREQ(reason(), "The connection was closed before the controller had taken the request.");
    }
}

// Waits until the other end's system has all that was sent.
void wait_until_taken(int socket) {
    const auto deadline = std::chrono::steady_clock::now() + 10s;
    int left = 1;
    while (::ioctl(socket, SIOCOUTQ, &left) == 0 && left > 0 && std::chrono::steady_clock::now() < deadline)
        std::this_thread::yield();
}

TEST(TcpPeer, UrgentDataEndsTheConnection) {
    for (const bool answers : {false, true})
        for (const bool sends : {false, true}) {
            std::promise<void> go, arrived;
            ScriptedPeer controller([&](PeerConnection& client) {
                if (answers) client.send(hex("A5 02 5A"));
                go.get_future().wait_for(10s);
                ::send(client.fd(), "!", 1, MSG_OOB);
                wait_until_taken(client.fd());
                arrived.set_value();
                client.read_all();
            });
            TcpPeer peer;
            ASSERT_EQ(peer.Connect(kLoopback, controller.port(), 3), QM_OK);
            if (answers) {
                ASSERT_EQ(Received(peer).code, QM_OK);
            }
            go.set_value();
            ASSERT_EQ(arrived.get_future().wait_for(10s), std::future_status::ready);
            EXPECT_EQ(sends ? peer.Send(kRequest.data(), 3) : Received(peer).code, QM_FAILED);
            controller.join(); // the peer saw the close
            clear_reason();
            EXPECT_EQ(peer.Send(kRequest.data(), 3), QM_FAILED);
            EXPECT_STREQ(reason(), "There is no connection to the controller.");
        }
}

} // namespace
} // namespace qm::test
