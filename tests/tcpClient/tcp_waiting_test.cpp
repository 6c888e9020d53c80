// Waiting in a host that has signals, many descriptors and slow peers.
#include "hex.h"
#include "scripted_peer.h"
#include "tcpClient/HV_Client.h"
#include "wire.h"

#include <atomic>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/timerfd.h>
#include <unistd.h>

namespace qm::test {
namespace {

constexpr const char* kLoopback = "127.0.0.1";
constexpr rlim_t kCrowd = 1200;

// Whether the condition held at some time.
template <class Condition> bool wait_for(Condition&& condition) {
    const auto limit = Clock::now() + std::chrono::seconds(10);
    for (; Clock::now() < limit; std::this_thread::yield())
        if (condition()) return true;
    return false;
}

// Whether a thread of this process sleeps in a system call.
bool asleep(pid_t thread) {
    std::ifstream stat("/proc/self/task/" + std::to_string(thread) + "/stat");
    std::string line;
    std::getline(stat, line);
    const auto name_end = line.rfind(')');
    return name_end != line.npos && line.compare(name_end, 3, ") S") == 0;
}

TEST(Waiting, SlowPeerStillGetsTheWholeLargeFrame) {
    const pid_t sender = ::gettid();
    constexpr std::size_t kSize = 12U << 20; // more than the buffers between the two hold
    ByteBuffer taken;
    taken.reserve(kSize);
    ScriptedPeer controller([&](PeerConnection& client) {
        ByteBuffer part(1U << 22);
        do { // the sender has filled all buffers, or is through, before more is taken
            EXPECT_TRUE(wait_for([&] { return asleep(sender); }));
            const auto count = ::recv(client.fd(), part.data(), part.size(), MSG_WAITALL);
            part.resize(count > 0 ? static_cast<std::size_t>(count) : 0);
            taken.insert(taken.end(), part.begin(), part.end());
        } while (!part.empty());
    });
    ByteBuffer frame(kSize);
    for (std::size_t i = 0; i < frame.size(); ++i) frame[i] = static_cast<Ouint8>(i * 7 + (i >> 13));
    {
        TcpPeer peer;
        ASSERT_EQ(peer.Connect(kLoopback, controller.port(), 3), QM_OK);
        EXPECT_EQ(peer.Send(frame.data(), static_cast<int>(frame.size())), QM_OK);
    }
    controller.join();
    EXPECT_EQ(taken.size(), frame.size());
    EXPECT_TRUE(taken == frame);
}

TEST(Waiting, EndsAtOnceWhenTheTimeIsOver) {
    const Descriptor timer(::timerfd_create(CLOCK_MONOTONIC, TFD_CLOEXEC));
    const itimerspec later{{}, {2, 0}};
    ASSERT_EQ(::timerfd_settime(timer.get(), 0, &later, nullptr), 0);
    EXPECT_EQ(wait_ready(timer.get(), POLLIN, Clock::now() - std::chrono::hours(1)), 0);
}

std::atomic<int> g_signals = 0;

TEST(Waiting, SignalsDoNotFailACall) {
    using Action = struct sigaction;
    Action count{}, before{};
    count.sa_handler = [](int) { ++g_signals; }; // without SA_RESTART
    ASSERT_EQ(::sigaction(SIGUSR1, &count, &before), 0);
    const pthread_t caller = ::pthread_self();
    const pid_t id = ::gettid();
    ScriptedPeer controller([&](PeerConnection& client) {
        for (int exchange = 0; exchange < 2; ++exchange) {
            client.read_frame();
            EXPECT_TRUE(wait_for([&] { return asleep(id); })); // in the wait for the answer
            ::pthread_kill(caller, SIGUSR1);
            EXPECT_TRUE(wait_for([&] { return g_signals > exchange; }));
            client.send(AnswerFrame{}.bytes());
        }
        client.read_all();
    });
    Ping_data data{};
    EXPECT_EQ(cmd_tcpPing(kLoopback, controller.port(), &data), QM_OK);
    controller.join();
    ::sigaction(SIGUSR1, &before, nullptr);
}

TEST(Waiting, HostWithMoreThan1024DescriptorsIsServed) {
    rlimit before{};
    ::getrlimit(RLIMIT_NOFILE, &before);
    if (before.rlim_max < kCrowd + 100) GTEST_SKIP() << "the system allows only " << before.rlim_max;
    const rlimit raised{std::max(before.rlim_cur, kCrowd + 100), before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &raised), 0);
    {
        std::vector<Descriptor> crowd;
        while (crowd.size() < kCrowd) crowd.emplace_back(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        ASSERT_GE(crowd.back().get(), 1024);
        const ByteBuffer answer = AnswerFrame{}.bytes();
        ScriptedPeer controller(ScriptedPeer::answering({answer, answer}));
        Ping_data data{};
        EXPECT_EQ(cmd_tcpPing(kLoopback, controller.port(), &data), QM_OK);
    }
    ::setrlimit(RLIMIT_NOFILE, &before);
}

} // namespace
} // namespace qm::test
