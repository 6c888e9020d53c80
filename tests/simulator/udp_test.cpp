// UDP on loopback: the controllers' protocol and the Wi-Fi module.
#include "host.h"

#include "support/Descriptor.h"

#include <poll.h>

namespace qm::sim {
namespace {

class UdpClient {
  public:
    explicit UdpClient(std::uint16_t port) : m_socket(qm::test::connected_socket(SOCK_DGRAM, port)) {}
    void send(Bytes bytes) { EXPECT_GE(::send(m_socket.get(), bytes.data(), bytes.size(), 0), 0); }
    ByteBuffer ask(Bytes bytes) {
        send(bytes);
        ByteBuffer answer(65536);
        if (wait_ready(m_socket.get(), POLLIN, Clock::now() + std::chrono::seconds(10)) <= 0) return {};
        const ssize_t length = ::recv(m_socket.get(), answer.data(), answer.size(), 0);
        answer.resize(length < 0 ? 0 : static_cast<std::size_t>(length));
        return answer;
    }
    std::string ask_text(const std::string& text) {
        const ByteBuffer answer = ask({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        return {answer.begin(), answer.end()};
    }

  private:
    Descriptor m_socket;
};

TEST(Udp, AnswersAsTcpDoesAndIsDeafToWhatIsNoFrame) {
    const Simulator sim({.udp = 0, .udp_listen = "127.0.0.1"});
    UdpClient client(sim.udp_port());
    for (const char* noise : {"", "41 54", "A5*8 01 5A", "A5*8"}) client.send(test::hex(noise));
    EXPECT_EQ(client.ask(test::handshake()), test::Client(sim.port()).ask(test::handshake()));
    const ByteBuffer off = client.ask(test::command_frame(0xA2, 5, test::hex("00")));
    EXPECT_TRUE(test::answer_in(off).acknowledged());
    EXPECT_FALSE(sim.state().power);
}

TEST(Udp, FaultsSpoilDatagramsToo) {
    Simulator sim({.udp = 0, .udp_listen = "127.0.0.1"});
    UdpClient client(sim.udp_port());
    const ByteBuffer good = client.ask(test::handshake());
    sim.set_fault(Fault{FaultKind::delay, 0, std::chrono::milliseconds(1)});
    EXPECT_EQ(client.ask(test::handshake()), good);
    sim.set_fault(Fault{FaultKind::bad_crc});
    ByteBuffer spoilt = client.ask(test::handshake());
    EXPECT_NE(spoilt, good);
    EXPECT_EQ(spoilt.size(), good.size());
}

TEST(Udp, WifiModuleIsSetUpByCommands) {
    const Simulator sim({.wifi = 0, .udp_listen = "127.0.0.1"});
    UdpClient module(sim.wifi_port());
    struct Row {
        const char *command, *answer;
    };
    for (const Row& row :
         {Row{"AT", "OK"}, Row{"AT+AP=net work,4,secret,11", "+OK"}, Row{"AT+AP_IP=192.168.100.1", "+OK"},
          Row{"AT+SOCKET=TCPS,0.0.0.0,0,5005", "+OK"}, Row{"AT+WMODE=2", "+OK"}, Row{"AT+RST", "OK"},
          Row{"AT+AP=,4,secret,11", "+ERR=-1"}, Row{"AT+AP=name,4,secret", "+ERR=-1"},
          Row{"AT+AP=a,b,4,secret,11", "+ERR=-1"}, Row{"AT+WMODE=", "+ERR=-1"}, Row{"AT+", "+ERR=-1"},
          Row{"hello", "+ERR=-1"}})
        EXPECT_EQ(module.ask_text(row.command), row.answer) << row.command;
    const std::string inquiry = module.ask_text("AT+INQUIRY");
    EXPECT_THAT(inquiry, testing::StartsWith("net work,secret,"));
    EXPECT_GE(inquiry.size(), 38U);
    EXPECT_EQ(sim.state().wifi.restarts, 1U);
    EXPECT_EQ(sim.state().wifi.ssid, "net work");
}

TEST(Udp, PortInUseIsRefused) {
    const Simulator first({.udp = 0, .udp_listen = "127.0.0.1"});
    EXPECT_THROW(Simulator({.udp = first.udp_port(), .udp_listen = "127.0.0.1"}), std::runtime_error);
}

} // namespace
} // namespace qm::sim
