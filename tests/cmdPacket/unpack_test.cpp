// What a caller learns from an answer, and what an answer may change in the connection.
#include "cmdPacket/LedHVPacket.h"
#include "hex.h"
#include "support/reason.h"
#include "wire.h"

namespace qm::test {
namespace {

// Unpacks the answer to group A2 into a buffer with guard bytes behind.
struct Unpacked {
    Unpacked(Bytes frame, std::size_t capacity, Ouint8 cmd = 0) : buffer(capacity + 4, 0xEE) {
        answer.buffer = std::span(buffer).first(capacity);
        answer.length = -7; // of an earlier answer
        clear_reason();
        printed = printed_by([&] { code = packet.Unpack(frame, 0xA2, cmd, answer); });
        why = reason();
    }
    LedHVPacket packet;
    ByteBuffer buffer;
    Answer answer;
    int code = 0;
    std::string printed, why;
};

// CRC ABEB over the 12 application bytes.
#define APPLICATION_LAYER " 00 A2 80 00 00 00 00 03 00 5B 02 01 A6 01 5A"
constexpr const char* kAnswer5 =
    "A5*8 00 80 00 80 05 33 51 01 00 00 02 00 00 84 96 00 00*6 0C 00 EB AB 3A" APPLICATION_LAYER;
constexpr const char* kAnswer6 =
    "A5*8 00 80 00 80 07 33 62 02 00 44 02 00 FF 00 96 00 00*6 0C 00 EB AB 00 37" APPLICATION_LAYER;
constexpr const char* kEnveloped = "A5*8 00 80 00 80 F0 00 62 02 00*4 0C 00 00 00" APPLICATION_LAYER;

TEST(Unpack, GivesThePayloadOfEveryGeneration) {
    for (const char* frame : {kAnswer5, kAnswer6, kEnveloped}) {
        SCOPED_TRACE(frame);
        const Unpacked result(hex(frame), 3);
        EXPECT_EQ(result.code, QM_OK);
        EXPECT_EQ(result.answer.length, 3);
        EXPECT_THAT(result.buffer, is_hex("5A 01 A6 EE EE EE EE"));
    }
}

#define UNKNOWN_VERSION(n) "The answer is of version " #n " of the link protocol, which is not known."
#define OTHER_COMMAND(group, code) "The answer is to another command: group " #group ", code " #code "."
#define REFUSED(error) "The controller refused with error " #error "."

TEST(Unpack, TheStatusTellsWhatWasWrong) {
    constexpr char kWrongCrc[] = "The CRC of the answer is wrong.";
    constexpr char kWrongHeader[] = "The header checksum of the answer is wrong.";
    const struct {
        AnswerFrame answer;
        int code;
        const char* reason;
    } cases[] = {
        {{}, QM_OK, ""},
        {{.payload = hex("01"), .crc_fault = 0x0100}, QM_BAD_CRC, kWrongCrc},
        {{.version = 5, .payload = hex("01"), .crc_fault = 1}, QM_BAD_CRC, kWrongCrc},
        {{.header_fault = 0x80}, QM_BAD_HEADER, kWrongHeader},
        {{.version = 5, .header_fault = 1}, QM_BAD_HEADER, kWrongHeader},
        {{.crc_fault = 1, .header_fault = 1}, QM_BAD_HEADER, kWrongHeader},
        {{.version = 6}, QM_BAD_VERSION, UNKNOWN_VERSION(6)},
        {{.version = 0}, QM_BAD_VERSION, UNKNOWN_VERSION(0)},
        {{.cmd = 0x81}, QM_WRONG_ANSWER, OTHER_COMMAND(0xA2, 0x81)},
        {{.cmd = 0x00}, QM_WRONG_ANSWER, OTHER_COMMAND(0xA2, 0x00)}, // a request
        {{.group = 0xA1}, QM_WRONG_ANSWER, OTHER_COMMAND(0xA1, 0x80)},
        {{.group = 0xA0, .cmd = 0}, QM_OK, ""},
        {{.group = 0xA0, .cmd = 0, .error = 5}, QM_OK, ""}, // an error is a refusal's only
        {{.group = 0xA0, .cmd = 1, .error = 0x0004}, 4, REFUSED(4)},
        {{.group = 0xA0, .cmd = 1, .error = 0xFFFE}, 0xFFFE, REFUSED(65534)},
        {{.version = 0xF0, .group = 0xA0, .cmd = 1, .error = 9}, 9, REFUSED(9)},
        {{.group = 0xA0, .cmd = 2}, QM_WRONG_ANSWER, OTHER_COMMAND(0xA0, 0x02)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(hex_text(c.answer.body()));
        const Unpacked result(c.answer.bytes(), 8);
        EXPECT_EQ(result.code, c.code);
        EXPECT_EQ(result.why, c.reason);
        EXPECT_EQ(result.answer.length, 0);
        EXPECT_THAT(result.buffer, is_hex("EE*12"));
        EXPECT_EQ(result.printed, "");
    }
}

TEST(Unpack, StartAndEndByteAreRequired) {
    for (const char* frame : {"", "A5", "5A", "01 5A", "A5*8", "A5*8 07 00", "A5*8 5A", "A5*8 01 02 5A"})
        EXPECT_EQ(Unpacked(hex(frame), 8).code, QM_FAILED) << frame;
    ByteBuffer headless = hex(kAnswer6);
    headless.erase(headless.begin(), headless.begin() + 8);
    EXPECT_EQ(Unpacked(headless, 8).code, QM_FAILED);
}

TEST(Unpack, BytesBehindTheAnnouncedOnesAreNoMatter) {
    for (const Ouint8 version : {Ouint8{5}, Ouint8{7}}) {
        ByteBuffer body = AnswerFrame{.version = version, .payload = hex("11 22")}.body();
        body.push_back(0x33);
        const Unpacked result(stuff(body), 8);
        EXPECT_EQ(result.code, QM_OK);
        EXPECT_THAT(result.buffer, is_hex("11 22 EE*10"));
    }
}

TEST(Unpack, EnvelopedAnswersAreTakenUnchecked) {
    ByteBuffer body = AnswerFrame{.version = 0xF0, .payload = hex("11 22")}.body();
    std::fill_n(body.begin() + 8, 8, Ouint8{0xFF}); // reserved bytes and length
    const Unpacked result(stuff(body), 8);
    EXPECT_EQ(result.code, QM_OK);
    EXPECT_THAT(result.buffer, is_hex("11 22 EE*10"));
}

TEST(Unpack, AnswerLongerThanTheBufferIsCutAndSaysSo) {
    const Unpacked result(hex(kAnswer6), 2);
    EXPECT_EQ(result.code, QM_TRUNCATED);
    EXPECT_EQ(result.answer.length, 2);
    EXPECT_THAT(result.buffer, is_hex("5A 01 EE*4"));
    EXPECT_EQ(result.why, "The answer has 3 bytes, and there is room for 2.");
    EXPECT_EQ(result.printed, "return Data Length too long!!! Control Card Return:cmd_header->datalen = 3; "
                              "but membuff len = 2;\n ");
}

TEST(Unpack, AnswerWithNowhereToGoIsAnError) {
    const Unpacked result(hex(kAnswer6), 0);
    EXPECT_EQ(result.code, QM_FAILED);
    EXPECT_EQ(result.why,
              "The controller answered with 3 bytes where the call takes an acknowledgement only.");
    EXPECT_EQ(result.printed, "nCmdDataLen <= 0 \n ");
    EXPECT_EQ(Unpacked(AnswerFrame{.group = 0xA0, .cmd = 0}.bytes(), 0).code, QM_OK); // an ACK needs no room
}

TEST(Unpack, RequestCodeFromHex80UpHasNoAnswer) {
    EXPECT_EQ(Unpacked(AnswerFrame{.cmd = 0xFF}.bytes(), 8, 0x7F).code, QM_OK);
    for (const Ouint8 answered : {Ouint8{0x00}, Ouint8{0x80}})
        EXPECT_EQ(Unpacked(AnswerFrame{.cmd = answered}.bytes(), 8, 0x80).code, QM_WRONG_ANSWER);
    EXPECT_EQ(Unpacked(AnswerFrame{.cmd = 0x7F}.bytes(), 8, 0xFF).code, QM_WRONG_ANSWER);
}

TEST(StateEcho, IsLearntFromGoodAnswersOnly) {
    struct {
        const char* symptom;
        AnswerFrame answer;
        int protocol_type, option; // 0 until they are learnt
    } cases[] = {
        {"generation 6", {}, 0x33, 0x44},
        {"generation 6 NACK", {.group = 0xA0, .cmd = 1, .error = 4}, 0x33, 0x44},
        {"generation 5 has no option", {.version = 5}, 0x33, 0},
        {"envelope", {.version = 0xF0}, 0, 0},
        {"wrong header", {.header_fault = 1}, 0, 0},
        {"wrong CRC", {.crc_fault = 1}, 0, 0},
        {"length beyond the frame", {.claimed_data = 0xFFFF}, 0, 0},
    };
    for (auto& c : cases) {
        c.answer.protocol_type = 0x33;
        c.answer.option = 0x44;
        const Unpacked result(c.answer.bytes(), 8);
        EXPECT_EQ(result.packet.m_protocoltype, c.protocol_type) << c.symptom;
        EXPECT_EQ(result.packet.m_Option, c.option) << c.symptom;
    }
}

TEST(Handshake, AnswerNeedsAKnownVersionButNoChecksums) {
    LedHVPacket packet;
    ByteBuffer body;
    for (const Ouint8 version : {Ouint8{5}, Ouint8{7}}) {
        AnswerFrame answer{.version = version, .protocol_type = version, .device_type = 0x5A62};
        answer.crc_fault = answer.header_fault = 1;
        EXPECT_EQ(packet.UnpackPing3(answer.bytes(), body), QM_OK);
        EXPECT_EQ(packet.m_protocoltype, version);
        EXPECT_EQ(hex_text(body), hex_text(answer.body()));
    }
    for (const char* frame : {"A5*8 00*4 F0 5A", "A5*8 00*4 06 00 62 5A", "A5*8 00*4 F0 00 62 02 5A"})
        EXPECT_EQ(packet.UnpackPing3(hex(frame), body), QM_BAD_VERSION) << frame;
    for (const char* frame : {"", "A5 5A", "A5*8 00*4 5A", "A5*8 00*4 07 5A", "A5*8 00*4 07 00 62 5A",
                              "A5*8 00*4 07 00*5", "00*5 07 00*5 5A"})
        EXPECT_EQ(packet.UnpackPing3(hex(frame), body), QM_FAILED) << frame;
}

} // namespace
} // namespace qm::test
