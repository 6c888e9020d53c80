// A body byte that looks like a start or end byte must reach the controller, and come back, as it was.
#include "cmdPacket/LedPacket.h"
#include "cmdPacket/stuffing.h"
#include "hex.h"
#include "support/processor.h"
#include "wire.h"

#include <memory>
#include <random>

namespace qm::test {
namespace {

ByteBuffer stuffed(Bytes body) {
    ByteBuffer room;
    room.resize(LedPacket::Transfer_Packet(body, room).size());
    return room;
}

ByteBuffer restored(Bytes frame) {
    ByteBuffer body;
    LedPacket().Restore_Packet(frame, body);
    return body;
}

TEST(Stuffing, EveryEscapeIsWrittenAndRead) {
    const char* const bodies_and_frames[][2] = {
        {"59 5C A4 A7 00 FF", "A5*8 59 5C A4 A7 00 FF 5A"},
        {"5A 5B A5 A6", "A5*8 5B 02 5B 01 A6 02 A6 01 5A"},
        {"5B 02 A6 01", "A5*8 5B 01 02 A6 01 01 5A"},
        {"01 5A", "A5*8 01 5B 02 5A"},
        {"A5 01", "A5*8 A6 02 01 5A"},
    };
    for (const auto& [body, frame] : bodies_and_frames) {
        EXPECT_THAT(stuffed(hex(body)), is_hex(frame));
        EXPECT_THAT(restored(hex(frame)), is_hex(body));
    }
}

TEST(Stuffing, DamagedFramesRestoreToWhatCanBeRead) {
    struct {
        const char *symptom, *frame, *body;
    } const cases[] = {
        {"three start bytes", "A5*3 01 5B 02 02 5A", "01 5A 02"},
        {"no start byte", "01 5B 02 02 5A", "01 5A 02"},
        {"run of end bytes", "A5*8 01 02 5A*4", "01 02"},
        {"lone escape byte before a plain one", "A5*8 5B 03 A6 00 5A", "5B 03 A6 00"},
        {"lone escape byte before an escape", "A5*8 5B 5B 02 A6 A6 01 5A", "5B 5A A6 A6"},
        {"escape byte of the other kind", "A5*8 5B A6 02 5A", "5B A5"},
        {"lone escape byte at the end", "A5*8 01 5B 5A", "01 5B"},
        {"start and end bytes inside", "A5*8 01 5A A5 02 5A", "01 5A A5 02"},
        {"nothing but end bytes", "5A*3", "5A*3"},
        {"nothing but start bytes", "A5*8", ""},
        {"nothing", "", ""},
    };
    for (const auto& c : cases) EXPECT_THAT(restored(hex(c.frame)), is_hex(c.body)) << c.symptom;
}

TEST(Stuffing, RandomBodiesComeBackAndFillExactlyTheLengthPromised) {
    constexpr Ouint8 kAwkward[] = {0x5A, 0x5B, 0xA5, 0xA6, 0x01, 0x02, 0x00, 0xFF};
    std::mt19937 random(1);
    for (int round = 0; round < 2000; ++round) {
        ByteBuffer body(2 + random() % 200);
        for (Ouint8& b : body) b = kAwkward[random() % 8];
        const ByteBuffer frame = stuffed(body);
        ASSERT_EQ(frame.size(), LedPacket::stuffed_length(body));
        ASSERT_EQ(std::count(frame.begin(), frame.end(), 0x5A), 1);
        ASSERT_EQ(std::count(frame.begin(), frame.end(), 0xA5), 8);
        ASSERT_EQ(hex_text(restored(frame)), hex_text(body));
    }
}

// A byte at a time, whatever the bytes.
ByteBuffer restored_bytewise(Bytes stuffed) {
    ByteBuffer out;
    for (std::size_t i = 0; i < stuffed.size(); ++i) {
        const Ouint8 b = stuffed[i], next = i + 1 < stuffed.size() ? stuffed[i + 1] : Ouint8{0};
        const bool pair = (b == 0x5B || b == 0xA6) && (next == 1 || next == 2);
        out.push_back(static_cast<Ouint8>(pair && next == 2 ? b - 1 : b));
        if (pair) ++i;
    }
    return out;
}

// Bytes in memory of their own, at some alignment, that ends with them.
class Exact {
  public:
    Exact(std::size_t offset, std::size_t length)
        : m_memory(std::make_unique<Ouint8[]>(offset + length)), bytes(m_memory.get() + offset, length) {}

  private:
    std::unique_ptr<Ouint8[]> m_memory;

  public:
    std::span<Ouint8> bytes;
};

void compare_with_single_bytes(const StuffingKernels& kernels) {
    constexpr Ouint8 kAwkward[] = {0x5A, 0x5B, 0xA5, 0xA6, 1, 2, 0x59, 0x5C, 0xA4, 0xA7, 0x80, 0x7F};
    std::mt19937 random(32);
    for (std::size_t length = 0; length <= 300; ++length)
        for (const unsigned rarity : {1U, 5U, 40U, 1000U}) {
            const Exact in(random() % 33, length);
            for (Ouint8& b : in.bytes) b = random() % rarity == 0 ? kAwkward[random() % 12] : Ouint8{0xFF};
            const ByteBuffer frame = stuff(in.bytes), restored = restored_bytewise(in.bytes);

            const Bytes stuffed = Bytes(frame).subspan(8, frame.size() - 9);
            ASSERT_EQ(kernels.count(in.bytes), stuffed.size() - length);
            const Exact out(random() % 33, stuffed.size());
            ASSERT_EQ(kernels.stuff(in.bytes, out.bytes.data()), stuffed.size());
            ASSERT_EQ(hex_text(out.bytes), hex_text(stuffed));

            const Exact back(random() % 33, length); // of bytes that stuffing need not have made
            ASSERT_EQ(kernels.restore(in.bytes, back.bytes.data()), restored.size());
            ASSERT_EQ(hex_text(back.bytes.first(restored.size())), hex_text(restored));
        }
}

TEST(Stuffing, EveryKernelGivesWhatSingleBytesGive) {
    compare_with_single_bytes(kPortableStuffing);
    if (has_avx2()) compare_with_single_bytes(kAvx2Stuffing);
}

TEST(Stuffing, ABodyOfNothingButEscapesIsCountedToTheEnd) {
    const ByteBuffer body(100000, 0x5A);
    EXPECT_EQ(LedPacket::Need_Transfer_Count(body), body.size());
    EXPECT_EQ(restored(stuffed(body)), body);
}

} // namespace
} // namespace qm::test
