// A controller that misbehaves, as a host sees it.
#include "client.h"
#include "samples.h"
#include "simulator/Simulator.h"

#include "hex.h"

#include <thread>

namespace qm::sim {
namespace {

using test::Client;
using test::handshake;

const ByteBuffer kUpdate =
    test::envelope_around(test::payload_of({{1, {0, 0, 8, 1}, {ByteBuffer(4, 0x00)}}}));
constexpr std::size_t kCodeAt = 38; // of a global answer

Options faulty(Fault fault) {
    return {.width = 8, .height = 1, .color = ScreenColor::single, .fault = fault};
}

// Waits, within bounds, until the controller has seen so many requests.
bool saw_requests(const Simulator& sim, std::size_t count) {
    const auto deadline = Clock::now() + std::chrono::seconds(10);
    while (sim.requests() < count && Clock::now() < deadline) std::this_thread::yield();
    return sim.requests() >= count;
}

TEST(Fault, SilenceAnswersNothingButCarriesOut) {
    Simulator sim(faulty({FaultKind::silence}));
    Client client(sim.port());
    client.send(kUpdate);
    ASSERT_TRUE(saw_requests(sim, 1));
    EXPECT_EQ(test::letters(sim.screen()), "RRRRRRRR");
    sim.set_fault({});
    EXPECT_EQ(client.ask(handshake(6))[18], 6); // the first answer that comes
}

TEST(Fault, CloseAndResetEndTheConnectionInPlaceOfAnAnswer) {
    Simulator sim(faulty({FaultKind::close}));
    Client closed(sim.port());
    closed.send(handshake());
    EXPECT_EQ(closed.wait_for_end(), Client::End::closed);
    sim.set_fault(Fault{FaultKind::reset});
    Client reset(sim.port());
    reset.send(handshake());
    EXPECT_EQ(reset.wait_for_end(), Client::End::reset);
}

TEST(Fault, LateAndSplitAnswersArriveWhole) {
    Simulator sim;
    const ByteBuffer good = Client(sim.port()).ask(handshake());
    for (const FaultKind kind : {FaultKind::split, FaultKind::delay}) {
        sim.set_fault(Fault{.kind = kind, .delay = std::chrono::milliseconds(20)});
        Client client(sim.port());
        client.send(handshake());
        client.send(handshake()); // is answered in its turn
        EXPECT_EQ(client.receive(), good);
        EXPECT_EQ(client.receive(), good);
    }
}

TEST(Fault, NackRefusesAndCarriesNothingOut) {
    Simulator sim(faulty({FaultKind::nack}));
    const ByteBuffer answer = Client(sim.port()).ask(kUpdate);
    ASSERT_GT(answer.size(), kCodeAt + 3);
    EXPECT_EQ(answer[kCodeAt], 1);
    EXPECT_EQ(answer[kCodeAt + 3], 199);
    EXPECT_EQ(test::letters(sim.screen()), "........");
    EXPECT_EQ(sim.payloads().size(), 1U);
}

TEST(Fault, BeginsAfterTheGoodAnswersOfAllConnections) {
    Simulator sim(faulty({.kind = FaultKind::nack, .after = 2}));
    const auto code = [&] { return Client(sim.port()).ask(kUpdate)[kCodeAt]; };
    EXPECT_EQ(code(), 0);
    EXPECT_EQ(code(), 0);
    EXPECT_EQ(code(), 1);
    EXPECT_EQ(code(), 1);
    sim.set_fault(Fault{.kind = FaultKind::nack, .after = 1});
    EXPECT_EQ(code(), 0);
    EXPECT_EQ(code(), 1);
    sim.set_fault({});
    EXPECT_EQ(code(), 0);
}

TEST(Fault, AWaitingAnswerDoesNotHoldUpTheEnd) {
    auto sim =
        std::make_unique<Simulator>(faulty({.kind = FaultKind::delay, .delay = std::chrono::hours(1)}));
    Client client(sim->port());
    client.send(handshake());
    ASSERT_TRUE(saw_requests(*sim, 1));
    sim.reset();
    EXPECT_EQ(client.wait_for_end(), Client::End::closed);
}

} // namespace
} // namespace qm::sim
