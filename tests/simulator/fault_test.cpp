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

TEST(Fault, NackCarriesNothingOut) {
    const Simulator sim(faulty({FaultKind::nack}));
    Client client(sim.port());
    EXPECT_FALSE(client.ask(kUpdate).empty());
    EXPECT_TRUE(sim.dynamic_areas().empty());
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
