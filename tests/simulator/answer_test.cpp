// Answers byte for byte, well and spoilt. The CRCs were worked out apart from this code.
#include "simulator/wire/Delivery.h"

#include "hex.h"
#include "samples.h"
#include "wire.h"

namespace qm::sim {
namespace {

using qm::test::hex;
using qm::test::is_hex;

constexpr Sender k6{0x0262, 1}, k5{0x0151, 1}, kUnframed{0x015F, 1};
constexpr const char* kLink6 = "00 80 01 00 07 02 62 02 00 02 04 00 FF 00 96 00 00*6 ";

Request request(std::uint8_t group = 0xA2, std::uint8_t cmd = 0) {
    Request request;
    request.sequence = 4;
    request.group = group;
    request.cmd = cmd;
    return request;
}

ByteBuffer body_of(const Delivery& delivery) { return test::unstuffed(delivery.bytes); }

ByteBuffer spoilt(FaultKind kind, const Reply& reply = Ack{}, Sender sender = k6) {
    return body_of(deliver(request(0xA7), reply, sender, Fault{kind}));
}

TEST(Answer, AcknowledgesInTheGlobalGroup) {
    EXPECT_THAT(deliver(request(), Ack{}, k6, {}).bytes,
                is_hex("A5*8 00 80 01 00 07 02 62 02 00 02 04 00 FF 00 96 00 00*6 09 00 0A 78 00 F0 "
                       "00 A0 00 00 00 00 00 00 00 5A"));
    EXPECT_THAT(deliver(request(), Ack{}, k5, {}).bytes,
                is_hex("A5*8 00 80 01 00 05 02 51 01 00 00 04 00 00 84 96 00 00*6 09 00 0A 78 BB "
                       "00 A0 00 00 00 00 00 00 00 5A"));
}

TEST(Answer, RefusesWithItsErrorValue) {
    EXPECT_THAT(body_of(deliver(request(), ErrorValue::unknown_command, k6, {})),
                is_hex(std::string(kLink6) + "09 00 04 74 00 F2 00 A0 01 00 00 65 00 00 00"));
}

TEST(Answer, CarriesAPayloadInTheGroupOfTheRequest) {
    const ByteBuffer body = body_of(deliver(request(0xA1, 0x12), hex("5A A5 01"), k6, {}));
    EXPECT_THAT(Bytes(body).subspan(28), is_hex("00 A1 92 00 00 00 00 03 00 5A A5 01"));
}

TEST(Answer, OfATypeWithoutFramingIsOfGeneration6) {
    EXPECT_THAT(Bytes(body_of(deliver(request(), Ack{}, kUnframed, {}))).first(8),
                is_hex("00 80 01 00 07 02 5F 01"));
}

// What stands in an answer, judged by the frame alone.
struct Judgement {
    bool header_right, crc_right;
};
Judgement judge(Bytes body) {
    std::uint8_t sum = 0;
    for (const std::uint8_t b : body.first(27)) sum ^= b;
    const Bytes application = body.subspan(28);
    return {sum == body[27], qm::test::crc16(application) == (body[24] | body[25] << 8)};
}

TEST(FaultyAnswer, SpoilsOneChecksumAlone) {
    const Judgement crc = judge(spoilt(FaultKind::bad_crc));
    EXPECT_TRUE(crc.header_right);
    EXPECT_FALSE(crc.crc_right);
    const Judgement header = judge(spoilt(FaultKind::bad_header));
    EXPECT_FALSE(header.header_right);
    EXPECT_TRUE(header.crc_right);
}

TEST(FaultyAnswer, AnswersAnotherCommand) {
    EXPECT_THAT(Bytes(spoilt(FaultKind::wrong_code)).subspan(28), is_hex("00 A7 81 00 00 00 00 00 00"));
}

TEST(FaultyAnswer, IsLongerThanAskedForWithRightChecksums) {
    const ByteBuffer body = spoilt(FaultKind::oversize, hex("01 02"));
    EXPECT_THAT(Bytes(body).subspan(28, 11), is_hex("00 A7 80 00 00 00 00 02 10 01 02"));
    EXPECT_EQ(body.size(), 28U + 9 + 4098);
    EXPECT_TRUE(judge(body).header_right && judge(body).crc_right);
}

TEST(FaultyAnswer, ClaimsMoreThanItHoldsWithRightChecksums) {
    const ByteBuffer body = spoilt(FaultKind::false_length, hex("01 02"));
    EXPECT_THAT(Bytes(body).subspan(28), is_hex("00 A7 80 00 00 00 00 EA 03 01 02"));
    EXPECT_TRUE(judge(body).header_right && judge(body).crc_right);
}

TEST(FaultyAnswer, GoesOutLateOrInPieces) {
    const ByteBuffer good = deliver(request(), Ack{}, k6, {}).bytes;
    const Delivery late =
        deliver(request(), Ack{}, k6, Fault{.kind = FaultKind::delay, .delay = std::chrono::milliseconds(7)});
    EXPECT_EQ(late.late, std::chrono::milliseconds(7));
    EXPECT_EQ(late.bytes, good);
    EXPECT_EQ(late.first, good.size());
    const Delivery split =
        deliver(request(), Ack{}, k6, Fault{.kind = FaultKind::split, .delay = std::chrono::milliseconds(7)});
    EXPECT_EQ(split.pause, std::chrono::milliseconds(7));
    EXPECT_EQ(split.bytes, good);
    EXPECT_GT(split.first, 8U);
    EXPECT_LT(split.first, good.size());
}

TEST(FaultyAnswer, IsNoFrame) {
    const Delivery garbage = deliver(request(), Ack{}, k6, Fault{FaultKind::garbage});
    EXPECT_FALSE(garbage.bytes.empty());
    EXPECT_NE(garbage.bytes.front(), 0xA5);
}

TEST(FaultName, IsKnownForEveryKind) {
    for (const char* name : {"silence", "close", "reset", "split", "bad-crc", "bad-header", "wrong-code",
                             "nack", "garbage", "oversize", "false-length", "delay"}) {
        const auto kind = fault_named(name);
        ASSERT_TRUE(kind) << name;
        EXPECT_EQ(name_of(*kind), name);
    }
    EXPECT_FALSE(fault_named("crash"));
}

} // namespace
} // namespace qm::sim
