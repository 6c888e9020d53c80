// Which frames a controller understands, and that it stays silent to every spoilt one; how it acknowledges
// and refuses. The CRCs were worked out apart from this code.
#include "simulator/wire/Delivery.h"
#include "simulator/wire/open_request.h"

#include "hex.h"

#include <random>

namespace qm::sim {
namespace {

using qm::test::hex;
using qm::test::is_hex;

constexpr const char* kHandshake = "FE FF 00 80 00 00 FE 01 02 00 04 00 23 B8 E3 A2 00 00 00";
constexpr const char* kPing5 =
    "FE FF 00 80 05 00 51 01 00 00 04 00 00 84 96 00 00*6 05 00 1E 78 A1 01 A2 00 00 00";
constexpr const char* kPing6 =
    "FE FF 00 80 07 00 62 02 00 00 04 00 FF 00 96 00 00*6 05 00 1E 78 00 E8 01 A2 00 00 00";
constexpr const char* kEnvelope = "FE FF 00 80 F0 00 62 02 00*4 07 00 00 00 01 A7 00 00 00 5A A6 4A CA";
// An envelope around the whole stuffed frame of kPing6.
constexpr const char* kDoubleEnvelope = "FE FF 00 80 F0 00 62 02 00*4 2A 00 00 00 A5*8 FE FF 00 80 07 00 62 "
                                        "02 00 00 04 00 FF 00 96 00 00*6 05 00 "
                                        "1E 78 00 E8 01 A2 00 00 00 5A E6 14";
// The envelope without a CRC: 9 bytes of command header before the payload.
constexpr const char* kAreaEnvelope =
    "FE FF 00 80 F0 00 54 01 00*4 0B 00 00 00 01 A7 00 00 00 02 00 00 00 5A A6";

struct GoodCase {
    const char *name, *body;
    Generation generation;
    std::uint16_t sequence;
    std::uint8_t group;
    const char* payload;
};

class GoodRequest : public testing::TestWithParam<GoodCase> {};

TEST_P(GoodRequest, IsUnderstood) {
    const GoodCase& good = GetParam();
    const auto opened = open_request(hex(good.body), good.generation);
    ASSERT_TRUE(std::holds_alternative<Request>(opened)) << std::get<BadFrame>(opened).why;
    const Request& request = std::get<Request>(opened);
    EXPECT_FALSE(request.malformed);
    EXPECT_TRUE(request.wants_answer);
    EXPECT_EQ(request.sequence, good.sequence);
    EXPECT_EQ(request.source, 0x8000);
    EXPECT_EQ(request.group, good.group);
    EXPECT_EQ(request.cmd, 0);
    EXPECT_THAT(request.payload(), is_hex(good.payload));
}

TEST_P(GoodRequest, IsNotAnsweredOnceAnyByteIsSpoiltOrCutOff) {
    const ByteBuffer whole = hex(GetParam().body);
    // The envelope without a CRC protects its length alone.
    const std::size_t first = GetParam().body == kAreaEnvelope ? 12 : 0;
    const std::size_t end = GetParam().body == kAreaEnvelope ? 16 : whole.size();
    for (std::size_t i = first; i < end; ++i) {
        ByteBuffer spoilt = whole;
        spoilt[i] ^= 0x10;
        EXPECT_TRUE(std::holds_alternative<BadFrame>(open_request(spoilt, GetParam().generation)))
            << "byte " << i;
    }
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_TRUE(
            std::holds_alternative<BadFrame>(open_request(Bytes(whole).first(length), GetParam().generation)))
            << "cut after " << length;
}

INSTANTIATE_TEST_SUITE_P(
    , GoodRequest,
    testing::Values(GoodCase{"HandshakeTo5", kHandshake, Generation::five, 2, 0xA2, ""},
                    GoodCase{"HandshakeTo6", kHandshake, Generation::six, 2, 0xA2, ""},
                    GoodCase{"HandshakeToOthers", kHandshake, Generation::none, 2, 0xA2, ""},
                    GoodCase{"Generation5", kPing5, Generation::five, 4, 0xA2, ""},
                    GoodCase{"Generation6", kPing6, Generation::six, 4, 0xA2, ""},
                    GoodCase{"EnvelopeTo5", kEnvelope, Generation::five, 0, 0xA7, "5A A6"},
                    GoodCase{"EnvelopeTo6", kEnvelope, Generation::six, 0, 0xA7, "5A A6"},
                    GoodCase{"FrameInEnvelope", kDoubleEnvelope, Generation::six, 4, 0xA2, ""},
                    GoodCase{"EnvelopeWithoutCrc", kAreaEnvelope, Generation::five, 0, 0xA7, "5A A6"}),
    [](const auto& which) { return which.param.name; });

TEST(Request, OfTheOtherGenerationIsNotAnswered) {
    const auto answered = [](const char* body, Generation generation) {
        return std::holds_alternative<Request>(open_request(hex(body), generation));
    };
    EXPECT_FALSE(answered(kPing5, Generation::six));
    EXPECT_FALSE(answered(kPing6, Generation::five));
    EXPECT_FALSE(answered(kDoubleEnvelope, Generation::five));
    EXPECT_FALSE(answered(kAreaEnvelope, Generation::six));
    EXPECT_FALSE(answered(kPing5, Generation::none));
    EXPECT_FALSE(answered(kPing6, Generation::none));
}

TEST(Request, WhoseCommandContradictsItselfIsRefusedRatherThanIgnored) {
    // The application layer claims a payload of 1 byte that is not there; the checksums are right.
    const auto opened = open_request(
        hex("FE FF 00 80 07 00 62 02 00 00 04 00 FF 00 96 00 00*6 05 00 1F E8 00 79 01 A2 00 01 00"),
        Generation::six);
    ASSERT_TRUE(std::holds_alternative<Request>(opened)) << std::get<BadFrame>(opened).why;
    EXPECT_TRUE(std::get<Request>(opened).malformed);
}

TEST(Request, OfAnyBytesIsReadWithinItsBounds) {
    std::mt19937 random(1);
    const char* const samples[] = {kHandshake, kPing5, kPing6, kEnvelope, kDoubleEnvelope, kAreaEnvelope};
    std::size_t bad = 0;
    for (int round = 0; round < 20000; ++round) {
        ByteBuffer body = hex(samples[random() % std::size(samples)]);
        for (auto changes = random() % 4 + 1; changes > 0; --changes)
            body[random() % body.size()] = static_cast<std::uint8_t>(random());
        body.resize(random() % (body.size() + 8));
        const auto generation = static_cast<Generation>(random() % 3);
        bad += std::holds_alternative<BadFrame>(open_request(body, generation));
    }
    EXPECT_GT(bad, 19000U);
}

TEST(Answer, IsAnAcknowledgementOrARefusalOfTheGlobalGroup) {
    constexpr Sender k6{0x0262, 1}, k5{0x0151, 1};
    Request request;
    request.sequence = 4;
    request.group = 0xA2;
    EXPECT_THAT(deliver(request, Ack{}, k6, {}).bytes,
                is_hex("A5*8 00 80 01 00 07 02 62 02 00 02 04 00 FF 00 96 00 00*6 09 00 0A 78 00 F0 "
                       "00 A0 00 00 00 00 00 00 00 5A"));
    EXPECT_THAT(deliver(request, Ack{}, k5, {}).bytes,
                is_hex("A5*8 00 80 01 00 05 02 51 01 00 00 04 00 00 84 96 00 00*6 09 00 0A 78 BB "
                       "00 A0 00 00 00 00 00 00 00 5A"));
    EXPECT_THAT(deliver(request, ErrorValue::unknown_command, k6, {}).bytes,
                is_hex("A5*8 00 80 01 00 07 02 62 02 00 02 04 00 FF 00 96 00 00*6 09 00 04 74 00 F2 00 A0 01 "
                       "00 00 65 00 00 00 5A"));
}

} // namespace
} // namespace qm::sim
