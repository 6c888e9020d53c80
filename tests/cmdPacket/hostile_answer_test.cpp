// Whatever arrives, nothing is read or written out of bounds and no rubbish passes for an answer. Frames and
// buffers are of exact length on the heap, so that a sanitizer sees the first byte beyond.
#include "cmdPacket/LedHVPacket.h"
#include "hex.h"
#include "support/reason.h"
#include "wire.h"

#include <random>

namespace qm::test {
namespace {

constexpr Ouint8 kVersions[] = {5, 7, 0xF0};

// Payload with every escape; a plain byte at its end, since an envelope has nothing to tell a cut escape by.
AnswerFrame answer_of(Ouint8 version) { return {.version = version, .payload = hex("5A 5B A5 A6 01 00 7F")}; }

// Opens the frame as an answer and as a handshake; gives the status of the first.
int unpack(Bytes frame, std::size_t capacity = 64) {
    const ByteBuffer exact(frame.begin(), frame.end());
    ByteBuffer buffer(capacity), body;
    Answer answer{buffer};
    (void)LedHVPacket().UnpackPing3(exact, body);
    clear_reason();
    return LedHVPacket().Unpack(exact, 0xA2, 0x00, answer);
}

TEST(HostileAnswer, CutAfterAnyByteIsRefusedThoughItHasAnEnd) {
    for (const Ouint8 version : kVersions) {
        const ByteBuffer whole = answer_of(version).bytes();
        ASSERT_EQ(unpack(whole), QM_OK);
        for (std::size_t length = 0; length + 1 < whole.size(); ++length) {
            SCOPED_TRACE(testing::Message() << "version " << int{version} << ", " << length << " bytes");
            ByteBuffer cut(whole.begin(), whole.begin() + static_cast<std::ptrdiff_t>(length));
            cut.push_back(0x5A);
            EXPECT_LT(unpack(cut), 0);
            EXPECT_STRNE(reason(), "");
        }
    }
}

// The checksums are right for what is claimed.
TEST(HostileAnswer, LengthsThatDoNotFitWhatCameAreRefused) {
    for (const Ouint8 version : kVersions) {
        for (const unsigned claim : {0U, 1U, 8U, 17U, 100U, 0x7FFFU, 0x8000U, 0xFFFFU}) {
            SCOPED_TRACE(testing::Message() << "version " << int{version} << ", " << claim << " bytes");
            const auto length = static_cast<Ouint16>(claim);
            AnswerFrame payload = answer_of(version), link = answer_of(version);
            payload.claimed_payload = length;
            link.claimed_data = length;
            const int refused = version == 0xF0 ? QM_FAILED : QM_BAD_CRC;
            if (length > payload.payload.size()) {
                EXPECT_EQ(unpack(payload.bytes(), 4), refused);
            }
            if (version != 0xF0) { // an envelope's is not read
                EXPECT_EQ(unpack(link.bytes()), QM_BAD_CRC);
            }
        }
    }
}

TEST(HostileAnswer, ChecksumsCatchEverySingleWrongBit) {
    for (const Ouint8 version : {Ouint8{5}, Ouint8{7}}) {
        const ByteBuffer body = answer_of(version).body();
        for (std::size_t bit = 0; bit < body.size() * 8; ++bit) {
            ByteBuffer spoilt = body;
            spoilt[bit / 8] ^= static_cast<Ouint8>(1U << bit % 8);
            EXPECT_LT(unpack(stuff(spoilt)), 0) << "version " << int{version} << ", bit " << bit;
        }
    }
}

TEST(HostileAnswer, RandomBytesAreNoAnswer) {
    std::mt19937 random(1);
    for (int round = 0; round < 20000; ++round) {
        ByteBuffer body(random() % 80);
        for (Ouint8& b : body) b = static_cast<Ouint8>(random());
        if (body.size() > 4 && round % 4 != 0) body[4] = kVersions[round % 2];
        ByteBuffer frame = round % 8 < 4 ? stuff(body) : body;
        if (frame.size() > 1) frame.front() = 0xA5, frame.back() = 0x5A;
        ASSERT_LT(unpack(frame), 0) << hex_text(frame);
    }
}

// An envelope has no checksums: any of its bytes may say anything, and its answer may still be a good one.
TEST(HostileAnswer, RandomEnvelopesFillNoMoreThanTheBuffer) {
    std::mt19937 random(2);
    for (int round = 0; round < 20000; ++round) {
        ByteBuffer body = answer_of(0xF0).body();
        body.resize(16 + random() % 20);
        for (int spoilt = 0; spoilt < 3; ++spoilt)
            body[random() % body.size()] = static_cast<Ouint8>(random());
        const std::size_t capacity = random() % 10;
        int code = 0;
        (void)printed_by([&] { code = unpack(stuff(body), capacity); });
        EXPECT_TRUE(code != QM_OK || body[17] != 0xA2 || body[23] <= capacity);
    }
}

} // namespace
} // namespace qm::test
