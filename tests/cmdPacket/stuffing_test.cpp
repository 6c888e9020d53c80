// A body byte that looks like a start or end byte must reach the controller, and come back, as it was.
#include "cmdPacket/LedPacket.h"
#include "hex.h"

#include <random>

namespace qm::test {
namespace {

Frame stuffed(Bytes body) {
    Frame out;
    LedPacket::Transfer_Packet(body, out);
    return out;
}

Frame restored(Bytes frame) {
    Frame body;
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
        Frame body(2 + random() % 200);
        for (Ouint8& b : body) b = kAwkward[random() % 8];
        const Frame frame = stuffed(body);
        ASSERT_EQ(frame.size(), LedPacket::stuffed_length(body));
        ASSERT_EQ(std::count(frame.begin(), frame.end(), 0x5A), 1);
        ASSERT_EQ(std::count(frame.begin(), frame.end(), 0xA5), 8);
        ASSERT_EQ(hex_text(restored(frame)), hex_text(body));
    }
}

} // namespace
} // namespace qm::test
