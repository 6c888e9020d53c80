// A wrong checksum makes a controller refuse every frame and every file.
#include "global.h"
#include "hex.h"
#include "support/crc.h"
#include "support/processor.h"

#include <memory>
#include <random>

namespace qm::test {
namespace {

TEST(Checksum, EveryKindGivesItsPublishedValues) {
    struct {
        std::string_view text;
        unsigned crc16, crc32, xor8;
    } const cases[] = {
        {"", 0, 0, 0},
        {"a", 0xE8C1, 0xE8B7BE43, 0x61},
        {"123456789", 0xBB3D, 0xCBF43926, 0x31},
        {"The quick brown fox jumps over the lazy dog", 0xFCDF, 0x414FA339, 0x4F},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        const ByteBuffer bytes(c.text.begin(), c.text.end());
        EXPECT_EQ(calc_crc(bytes), c.crc16);
        EXPECT_EQ(calc_crc32(bytes), c.crc32);
        EXPECT_EQ(calc_xor(bytes), c.xor8);

        FileCRC16_G56 file16{bytes.data(), static_cast<Ouint32>(bytes.size()), 0xFFFF};
        FileCRC32_G56 file32{bytes.data(), static_cast<Ouint32>(bytes.size()), 0xFFFFFFFF};
        EXPECT_EQ(get_crc16(&file16), QM_OK);
        EXPECT_EQ(get_crc32(&file32), QM_OK);
        EXPECT_EQ(Ouint16{file16.fileCRC16}, c.crc16);
        EXPECT_EQ(Ouint32{file32.fileCRC32}, c.crc32);
    }
}

// A kernel beside the plain loop over its table: every length up to several of its steps, at every alignment,
// in memory that ends with the data.
template <class Word> void compare_kernel(CrcKernel kernel, const std::array<Word, 256>& table) {
    std::mt19937 random(16);
    for (std::size_t length = 0; length <= 300; ++length)
        for (std::size_t offset = 0; offset < 17; ++offset) {
            const auto memory = std::make_unique<Ouint8[]>(offset + length);
            const Bytes bytes{memory.get() + offset, length};
            std::generate_n(memory.get(), offset + length, [&] { return static_cast<Ouint8>(random()); });
            const auto start = static_cast<Word>(random());
            Ouint32 plain = start;
            for (const Ouint8 b : bytes) plain = table[(plain ^ b) & 0xFFU] ^ plain >> 8U;
            ASSERT_EQ(plain, kernel(start, bytes)) << length << " bytes at " << offset;
        }
}

TEST(Checksum, EveryKernelGivesWhatThePlainLoopGives) {
    compare_kernel(crc_by_tables<kCrc16Polynomial>, crc16_tabel);
    compare_kernel(crc_by_tables<kCrc32Polynomial>, CRC32_Table);
    if (!has_carryless_multiply()) return;
    compare_kernel(crc_by_folding<kCrc16Polynomial>, crc16_tabel);
    compare_kernel(crc_by_folding<kCrc32Polynomial>, CRC32_Table);
}

TEST(Checksum, NullPointersAreRefusedAndChangeNothing) {
    FileCRC16_G56 file16{nullptr, 9, 0x1234};
    FileCRC32_G56 file32{nullptr, 9, 0x12345678};
    EXPECT_EQ(get_crc16(nullptr), QM_FAILED);
    EXPECT_EQ(get_crc32(nullptr), QM_FAILED);
    EXPECT_EQ(get_crc16(&file16), QM_FAILED);
    EXPECT_EQ(get_crc32(&file32), QM_FAILED);
    EXPECT_EQ(Ouint16{file16.fileCRC16}, 0x1234);
    EXPECT_EQ(Ouint32{file32.fileCRC32}, 0x12345678U);
}

} // namespace
} // namespace qm::test
