// A host reaches the controller, however many hosts there are and however their bytes arrive.
#include "client.h"
#include "samples.h"
#include "simulator/Simulator.h"

#include "hex.h"

#include <stdexcept>
#include <system_error>

namespace qm::sim {
namespace {

using qm::test::hex;
using qm::test::is_hex;
using test::Client;
using test::handshake;

constexpr const char* kAck =
    "A5*8 00 80 01 00 07 02 62 02 00 02 00 00 FF 00 96 00 00*6 09 00 0A 78 00 F4 00 A0 00*7 5A";

TEST(Connection, HandshakeTellsWhoTheControllerIs) {
    Simulator sim;
    EXPECT_THAT(
        Client(sim.port()).ask(hex("A5*8 FE FF 00 80 00 00 FE 01 02 00 04 00 23 B8 E3 A2 00 00 00 5A")),
        is_hex("A5*8 00 80 01 00 07 02 62 02 00 02 02 00 FF 00 96 00 00*6 3D 00 8C 6E 00 52 "
               "00 A2 80 00 00 00 00 34 00 "
               "62 02 53 49 4D 20 31 2E 30 30 01 01 00 00 80 00 20 00 02 0F 01 00 00 00*29 5A"));
}

TEST(Connection, HandshakeTellsSizeColourAndTypeWithoutFraming) {
    Simulator sim({.type = 0x015F, .width = 16, .height = 8, .color = ScreenColor::single});
    EXPECT_THAT(Client(sim.port()).ask(handshake()),
                is_hex("A5*8 00 80 01 00 07 02 5F 01 00 02 02 00 FF 00 96 00 00*6 3D 00 53 52 00 8F "
                       "00 A2 80 00 00 00 00 34 00 "
                       "5F 01 53 49 4D 20 31 2E 30 30 01 01 00 00 10 00 08 00 01 0F 01 00 00 00*29 5A"));
}

TEST(Connection, BytesMayArriveOneByOneWithGarbageBetween) {
    Simulator sim;
    Client client(sim.port());
    const ByteBuffer garbage = hex("00 5A 11 5B");
    const ByteBuffer update = test::envelope_around(test::payload_of({{}}));
    client.send(garbage);
    for (const std::uint8_t byte : update) client.send({&byte, 1});
    client.send(garbage);
    EXPECT_THAT(client.receive(), is_hex(kAck));
    EXPECT_EQ(sim.bad_frames(), 0U);
}

TEST(Connection, FramesSentTogetherAreAnsweredInTurn) {
    Simulator sim;
    Client client(sim.port());
    ByteBuffer both = handshake(2);
    ByteWriter(both).bytes(handshake(4));
    client.send(both);
    EXPECT_EQ(client.receive()[18], 2);
    EXPECT_EQ(client.receive()[18], 4);
}

TEST(Connection, SpoiltFramesGetNoAnswerAndAreCounted) {
    Simulator sim;
    Client client(sim.port());
    ByteBuffer spoilt = handshake(2);
    spoilt[20] ^= 1;
    client.send(spoilt);
    EXPECT_EQ(client.ask(handshake(4))[18], 4); // the first answer that comes
    EXPECT_EQ(sim.bad_frames(), 1U);
    EXPECT_EQ(sim.requests(), 1U);
}

TEST(Connection, ManyAreServedAtOnceAndCounted) {
    Simulator sim;
    {
        std::vector<Client> clients;
        for (int i = 0; i < 20; ++i) clients.emplace_back(sim.port());
        for (Client& client : clients) EXPECT_FALSE(client.ask(handshake()).empty());
        EXPECT_EQ(sim.open_connections(), 20U);
    }
    EXPECT_TRUE(sim.wait_idle());
    EXPECT_EQ(sim.open_connections(), 0U);
    EXPECT_FALSE(Client(sim.port()).ask(handshake()).empty());
    EXPECT_EQ(sim.connections(), 21U);
}

TEST(Connection, EndsWithTheSimulator) {
    auto sim = std::make_unique<Simulator>();
    Client client(sim->port());
    EXPECT_FALSE(client.ask(handshake()).empty());
    sim.reset();
    EXPECT_EQ(client.wait_for_end(), Client::End::closed);
}

TEST(Simulator, RefusesOptionsOutOfRange) {
    EXPECT_THROW(Simulator({.width = 0}), std::invalid_argument);
    EXPECT_THROW(Simulator({.height = 4097}), std::invalid_argument);
    EXPECT_THROW(Simulator({.color = ScreenColor{5}}), std::invalid_argument);
    EXPECT_THROW(Simulator({.listen = "localhost"}), std::invalid_argument);
    const Simulator first;
    EXPECT_THROW(Simulator({.port = first.port()}), std::system_error);
}

} // namespace
} // namespace qm::sim
