// The small conversions of the command builders: addresses, the clock.
#include "cmdPacket/LedPacket.h"
#include "hex.h"
#include "support/reason.h"

#include <cstdlib>
#include <ctime>
#include <new>

namespace qm::test {
namespace {

TEST(AddressText, FieldsAreDecimalNumbersOfLimitedLength) {
    struct {
        void (*convert)(const char*, Ouint8*);
        const char *text, *bytes;
    } const cases[] = {
        {LedPacket::strIPtoHex, "192.168.0.199", "C0 A8 00 C7"},
        {LedPacket::strIPtoHex, "0010.0.0.255", "0A 00 00 FF"}, // four characters fill a field
        {LedPacket::strIPtoHex, "00010.2.3.4", "01 00 02 03"},  // the fifth begins the next one
        {LedPacket::strIPtoHex, "10.20", "0A 14 00 00"},
        {LedPacket::strIPtoHex, "10..30.40", "0A 00 1E 28"},
        {LedPacket::strIPtoHex, "1.2.3.4.5", "01 02 03 04"},
        {LedPacket::strIPtoHex, "a.b.c.d", "00*4"},
        {LedPacket::strIPtoHex, "", "00*4"},
        {LedPacket::strMacToHex, "10-20-30-40-50-255", "0A 14 1E 28 32 FF"},
        {LedPacket::strMacToHex, "1A-FF-0-0-0-9", "01 00 00 00 00 09"}, // not hexadecimal
        {LedPacket::strMacToHex, "00010-2-3-4-5-6", "0A 02 03 04 05 06"},
        {LedPacket::strMacToHex, "000010-2-3-4-5-6", "01 00 02 03 04 05"},
        {LedPacket::strMacToHex, "7-8", "07 08 00*4"},
    };
    for (const auto& c : cases) {
        ByteBuffer out(hex(c.bytes).size(), 0xEE);
        c.convert(c.text, out.data());
        EXPECT_THAT(out, is_hex(c.bytes)) << c.text;
    }
}

TEST(Decimals, AreOneANibbleAndReadBackAsTheyStand) {
    EXPECT_EQ(LedPacket::intToBcd(2024), 0x2024);
    EXPECT_EQ(LedPacket::bcdToInt(0x2024), 0x2024);
}

// strftime writes the same record in hex; both must read the clock within one second.
TEST(Clock, RecordHoldsTheLocalTimeInBcdAndFollowsTheTimeZone) {
    for (const char* zone : {"TST-5:30", "TST7"}) {
        ::setenv("TZ", zone, 1);
        ByteBuffer record(8);
        std::time_t before = 0;
        do {
            before = std::time(nullptr);
            LedPacket::get_time(record.data());
        } while (std::time(nullptr) != before);
        char expected[64];
        std::strftime(expected, sizeof expected, "%y %C %m %d %H %M %S 0%w", std::localtime(&before));
        EXPECT_THAT(record, is_hex(expected)) << zone;
    }
    ::unsetenv("TZ");
    ::tzset();
}

TEST(Reason, IsTheFirstThatACallFinds) {
    clear_reason();
    EXPECT_EQ(fail(QM_BAD_CRC, "At %d bytes.", 7), QM_BAD_CRC);
    EXPECT_FALSE(in_range("later", 1, 2, 3));
    EXPECT_EQ(conclude(QM_BAD_CRC), QM_BAD_CRC);
    EXPECT_STREQ(reason(), "At 7 bytes.");
    clear_reason();
    try {
        throw std::bad_alloc();
    } catch (...) {
        EXPECT_EQ(fail_by_exception(), QM_FAILED);
    }
    EXPECT_STREQ(reason(), "Out of memory.");
    clear_reason();
}

TEST(Reason, CutsALongTextBetweenCharacters) {
    std::string text(300, 'x');
    for (std::size_t i = 90; i < 120; i += 3) text.replace(i, 3, "\u4F60");
    const std::string end = last_part(text.c_str());
    EXPECT_LE(end.size(), 200U);
    EXPECT_GT(end.size(), 197U);
    EXPECT_EQ(end.compare(0, 3, "\u4F60"), 0);
    EXPECT_TRUE(text.ends_with(end));
}

} // namespace
} // namespace qm::test
