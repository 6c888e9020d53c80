// The handshake, and asking a controller who it is.
#include "hex.h"
#include "scripted_peer.h"
#include "tcpClient/HV_Client.h"
#include "wire.h"

#include <cstring>

namespace qm::test {
namespace {

constexpr const char* kLoopback = "127.0.0.1";
constexpr const char* kPing = "A5*8 FE FF 00 80 00 00 FE 01 02 00 04 00 23 B8 E3 A2 00 00 00 5A";
constexpr const char* kRecord =
    "62 02 31 32 33 34 35 36 37 38 00 FE FF 05 80 00 20 00 02 10 01 07 00 00*9 00*20";

struct PingRecord {
    PingRecord() { std::memset(&data, 0xEE, sizeof data); }
    [[nodiscard]] Bytes bytes() const { return {reinterpret_cast<const Ouint8*>(&data), sizeof data}; }
    Ping_data data;
};

ByteBuffer handshake_answer() { return AnswerFrame{.protocol_type = 0x33}.bytes(); }
ByteBuffer ping_answer(ByteBuffer payload) { return AnswerFrame{.payload = std::move(payload)}.bytes(); }

// Pings a controller that does as the script says; a failure must leave the record as it was.
int ping(const ScriptedPeer::Script& script) {
    ScriptedPeer controller(script);
    PingRecord record;
    const int code = cmd_tcpPing(kLoopback, controller.port(), &record.data);
    EXPECT_THAT(record.bytes(), is_hex("EE*52"));
    return code;
}

TEST(Handshake, DecidesTheFramingOfTheCommandsThatFollow) {
    struct {
        AnswerFrame answer;
        const char* request; // CRC 781E
    } const cases[] = {
        {{.version = 5, .protocol_type = 0x33, .device_type = 0x0151},
         "A5*8 FE FF 00 80 05 33 51 01 00 00 04 00 00 84 96 00 00*6 05 00 1E 78 92 01 A2 00 00 00 5A"},
        {{.protocol_type = 0x33, .device_type = 0x5A62},
         "A5*8 FE FF 00 80 07 33 62 5B 02 00 00 04 00 FF 00 96 00 00*6 05 00 1E 78 00 83 01 A2 00 00 00 5A"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.request);
        std::vector<ByteBuffer> requests;
        ScriptedPeer controller(ScriptedPeer::answering({c.answer.bytes(), c.answer.bytes()}, &requests));
        {
            HV_Client client;
            ASSERT_EQ(client.init(kLoopback, controller.port()), QM_OK);
            EXPECT_EQ(client.m_DeviceType, c.answer.device_type);
            EXPECT_EQ(client.send_cmd(0xA2, 0, {}), QM_OK);
        }
        controller.join();
        ASSERT_EQ(requests.size(), 2U);
        EXPECT_THAT(requests[0], is_hex(kPing));
        EXPECT_THAT(requests[1], is_hex(c.request));
    }
}

TEST(TcpPing, FillsTheRecordWithTheAnswerAndZeros) {
    const ByteBuffer whole = hex(kRecord);
    ByteBuffer longer = whole;
    longer.insert(longer.end(), 20, 0x77);
    const ByteBuffer answers[] = {whole, longer, ByteBuffer(whole.begin(), whole.begin() + 10), {}};
    for (const ByteBuffer& answer : answers) {
        SCOPED_TRACE(answer.size());
        ScriptedPeer controller(ScriptedPeer::answering({handshake_answer(), ping_answer(answer)}));
        PingRecord record;
        EXPECT_EQ(cmd_tcpPing(kLoopback, controller.port(), &record.data), QM_OK);
        const std::size_t filled = std::min(answer.size(), whole.size());
        EXPECT_EQ(hex_text(record.bytes().first(filled)), hex_text(Bytes(whole).first(filled)));
        EXPECT_EQ(hex_text(record.bytes().subspan(filled)), hex_text(ByteBuffer(52 - filled)));
    }
}

TEST(TcpPing, RefusalsAndBadAnswersAreReported) {
    const AnswerFrame good;
    ByteBuffer open_ended = good.bytes();
    open_ended.back() = 0x00;
    AnswerFrame too_long;
    too_long.payload = ByteBuffer(1025);
    struct {
        const char* symptom;
        ByteBuffer handshake, answer;
        int code;
    } const cases[] = {
        {"handshake without end byte", open_ended, {}, QM_FAILED},
        {"handshake of no known version", AnswerFrame{.version = 6}.bytes(), {}, QM_BAD_VERSION},
        {"type that no frame is known for", AnswerFrame{.device_type = 0x00FE}.bytes(), {}, QM_FAILED},
        {"answer without end byte", good.bytes(), open_ended, QM_FAILED},
        {"refusal", good.bytes(), nack(7), 7},
        {"answer longer than 1,024 bytes", good.bytes(), too_long.bytes(), QM_TRUNCATED},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.symptom);
        (void)printed_by([&] { EXPECT_EQ(ping(ScriptedPeer::answering({c.handshake, c.answer})), c.code); });
    }
}

} // namespace
} // namespace qm::test
