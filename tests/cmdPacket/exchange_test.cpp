// One command, one answer, over a transport that notes every piece.
#include "hex.h"
#include "memory_link.h"
#include "wire.h"

namespace qm::test {
namespace {

using Exchange = int (ON_command::*)(Ouint8, Ouint8, Bytes, Answer&);
constexpr Exchange kPiecewise[] = {&ON_command::send_recv_cmd_1K, &ON_command::send_recv_cmd_1K2};

// Runs an exchange of group A7, command 0.
struct Outcome {
    Outcome(MemoryLink& link, Exchange exchange, Bytes payload, std::span<Ouint8> buffer = {})
        : answer{buffer} {
        printed = printed_by([&] { code = (link.*exchange)(0xA7, 0x00, payload, answer); });
    }
    Answer answer;
    int code = 0;
    std::string printed;
};

const ByteBuffer kAck = ack(), kNack = nack(21);

TEST(Exchange, SendsTheFrameWholeAndHandsOutTheAnswer) {
    MemoryLink link;
    link.answers = {answer_to(0xA7, 0, hex("5A 01"))};
    ByteBuffer buffer(4, 0xEE);
    const Outcome outcome(link, &ON_command::send_recv_cmd, hex("5A 10"), buffer);
    EXPECT_EQ(outcome.code, QM_OK);
    EXPECT_EQ(outcome.answer.length, 2);
    EXPECT_THAT(buffer, is_hex("5A 01 EE EE"));
    EXPECT_EQ(link.pieces.size(), 1U); // CRC 0333, header XOR BA
    EXPECT_THAT(link.sent(),
                is_hex("A5*8 FE FF 00 80 07 00 62 02 00 00 02 00 FF 00 96 00 00*6 07 00 33 03 00 BA "
                       "01 A7 00 02 00 5B 02 10 5A"));
    EXPECT_EQ(link.capacity, 65536);
    EXPECT_EQ(link.timeout, 3);
}

TEST(Exchange, EchoesTheControllersBytesInTheNextRequest) {
    MemoryLink link;
    link.answers = {AnswerFrame{.protocol_type = 0x33, .option = 0xFF, .group = 0xA0, .cmd = 0}.bytes(),
                    kAck};
    EXPECT_EQ(link.send_cmd(0xA2, 1, {}), QM_OK);
    EXPECT_EQ(link.send_cmd(0xA2, 1, {}), QM_OK);
    // protocol version, protocol type, controller type, physical type, option, sequence number
    EXPECT_THAT(Bytes(link.pieces[0]).subspan(12, 8), is_hex("07 00 62 02 00 00 02 00"));
    EXPECT_THAT(Bytes(link.pieces[1]).subspan(12, 8), is_hex("07 33 62 02 00 02 04 00"));
}

TEST(Exchange, CommandWithoutResultReportsTheControllersVerdict) {
    MemoryLink link;
    link.answers = {kAck, kNack, AnswerFrame{.cmd = 0x81, .payload = ByteBuffer(1024, 1)}.bytes(),
                    AnswerFrame{.cmd = 0x82}.bytes()};
    for (const int code :
         {QM_OK + 0, 21, QM_OK + 0, QM_WRONG_ANSWER + 0, QM_FAILED + 0}) // none is left at last
        EXPECT_EQ(link.send_cmd(0xA2, 1, {}), code);
}

TEST(Exchange, NothingIsSentWithoutAFrameAndNothingAwaitedWithoutAConnection) {
    MemoryLink untyped(0xFFFE), typed;
    EXPECT_EQ(untyped.send_cmd(0xA2, 1, {}), QM_FAILED);
    EXPECT_TRUE(untyped.pieces.empty());

    typed.answers = {kAck, kAck};
    EXPECT_EQ(typed.send_cmd(0xA2, 1, {}), QM_OK);
    EXPECT_EQ(typed.send_cmd(0xA2, 1, ByteBuffer(32768)), QM_FAILED); // nor is the previous frame sent again
    EXPECT_EQ(typed.pieces.size(), 1U);
    typed.sends_until_failure = 1;
    EXPECT_EQ(typed.send_cmd(0xA2, 1, {}), QM_FAILED);
    EXPECT_EQ(typed.answers.size(), 1U);
}

// A payload of n bytes that need no escape makes a frame of n + 27 bytes: 8 + 16 + n + 2 + 1.
TEST(EnvelopedExchange, GoesOutInPiecesOf1024Bytes) {
    struct {
        std::size_t payload;
        std::vector<std::size_t> pieces;
    } const cases[] = {{0, {27}},        {996, {1023}},        {997, {1024}},
                       {998, {1024, 1}}, {2021, {1024, 1024}}, {2022, {1024, 1024, 1}}};
    for (const Exchange exchange : kPiecewise) {
        for (const auto& c : cases) {
            SCOPED_TRACE(c.payload);
            MemoryLink link;
            link.answers = {kAck};
            const Outcome outcome(link, exchange, ByteBuffer(c.payload, 0x11));
            EXPECT_EQ(outcome.code, QM_OK);
            EXPECT_EQ(outcome.printed, "");
            std::vector<std::size_t> sizes;
            for (const ByteBuffer& piece : link.pieces) sizes.push_back(piece.size());
            EXPECT_EQ(sizes, c.pieces);
            EXPECT_EQ(link.capacity, 1024);
            EXPECT_EQ(link.timeout, 3);
        }
    }
}

TEST(EnvelopedExchange, LargePayloadOfAwkwardBytesArrivesWhole) {
    ByteBuffer body = hex("FE FF 00 80 F0 00 62 02 00*4 A0 86 01 00"); // 100,000 bytes follow
    for (unsigned i = 0; i < 100000; ++i) body.push_back(static_cast<Ouint8>(0x5A + i % 0x4D));
    const ByteBuffer payload(body.begin() + 16, body.end());
    ByteWriter(body).u16(crc16(body));
    for (const Exchange exchange : kPiecewise) {
        MemoryLink link;
        link.answers = {kAck};
        EXPECT_EQ(Outcome(link, exchange, payload).code, QM_OK);
        EXPECT_TRUE(link.sent() == stuff(body));
    }
}

TEST(EnvelopedExchange, FirstPieceThatFailsEndsItAndIsReported) {
#define SEND_FAILED "Send failed!!!!!!!!!!!!!!!!!!!!!!!!!!!!!! have sent bytes = "
    const char* const messages[][3] = {
        {SEND_FAILED "nTotalLen = 0 !\n", SEND_FAILED "nTotalLen = 1024 !\n",
         SEND_FAILED "nTotalLen = 2048 !\n"},
        {SEND_FAILED "0 !\n", SEND_FAILED "1024 !\n",
         "Send failed, at nRemainder !!!!!!!!!!!!!!!!!!!!!!!!!!!!! will sent bytes = 7 !\n"},
    };
    for (const std::size_t kind : {0U, 1U}) {
        for (const std::size_t piece : {0U, 1U, 2U}) {
            SCOPED_TRACE(messages[kind][piece]);
            MemoryLink link;
            link.answers = {kAck};
            link.sends_until_failure = piece;
            const Outcome outcome(link, kPiecewise[kind], ByteBuffer(2028, 0x11)); // 1,024 + 1,024 + 7
            EXPECT_EQ(outcome.code, QM_FAILED);
            EXPECT_EQ(outcome.printed, messages[kind][piece]);
            EXPECT_EQ(link.pieces.size(), piece);
            EXPECT_EQ(link.capacity, -1); // never received
        }
    }
}

TEST(EnvelopedExchange, MissingAndBadAnswersAreReported) {
    struct {
        std::deque<ByteBuffer> answers;
        int code;
        std::string message;
    } const cases[] = {
        {{}, QM_FAILED, "Recv failed. nTotalLen ======= "},
        {{kNack}, 21, "Unpack failed. nTotalLen ======= "},
        {{AnswerFrame{.group = 0xA7, .crc_fault = 1}.bytes()},
         QM_BAD_CRC,
         "Unpack failed. nTotalLen ======= "},
    };
    for (const std::size_t kind : {0U, 1U}) {
        for (const auto& c : cases) {
            MemoryLink link;
            link.answers = c.answers;
            const Outcome outcome(link, kPiecewise[kind], ByteBuffer(1007, 0x11));
            EXPECT_EQ(outcome.code, c.code) << c.message << kind;
            EXPECT_EQ(outcome.printed, c.message + (kind == 0 ? "1034 \n" : "0 \n"));
        }
    }
}

TEST(AtExchange, IsAcceptedWhenTheAnswerSaysOk) {
    const std::pair<std::string_view, int> cases[] = {
        {"OK", 0}, {"\r\n+ok=1\r\n", 0}, {"xxOKxx", 0}, {"ERROR", -1}, {"Ok oK", -1}, {"O", -1}, {"", -1}};
    for (const auto& [answer, code] : cases) {
        MemoryLink link;
        link.answers = {ByteBuffer(answer.begin(), answer.end())};
        EXPECT_EQ(link.send_AT_cmd("AT+E\r", 5), code) << answer;
        EXPECT_THAT(link.sent(), is_hex("41 54 2B 45 0D"));
        EXPECT_EQ(link.send_AT_cmd("AT", 2), QM_FAILED); // nothing received
        link.sends_until_failure = 2;
        EXPECT_EQ(link.send_AT_cmd("AT", 2), QM_FAILED);
    }
}

TEST(AtExchange, AnswersThatAreEmptyOrFillTheBufferAreRefused) {
    for (const int size : {0, 1, 511, 512}) {
        MemoryLink link;
        link.answers = {ByteBuffer(static_cast<std::size_t>(size), 0x41)};
        ByteBuffer buffer(512);
        Ouint16 length = 2;
        const bool taken = size > 0 && size < 512;
        EXPECT_EQ(link.send_AT_cmdRetData("AT", length, buffer.data()), taken ? QM_OK : QM_FAILED);
        EXPECT_EQ(length, taken ? size : 2);
        EXPECT_EQ(link.capacity, 512);
        EXPECT_THAT(link.sent(), is_hex("41 54"));
    }
}

} // namespace
} // namespace qm::test
