// The file system: what is kept, listed and read back, and what is refused.
#include "host.h"

#include "wire.h"

namespace qm::sim {
namespace {

using test::Host;
using test::is_hex;

struct Filed {
    Simulator sim;
    Host host{sim};
};

TEST(Files, BlocksInOrderMakeAFile) {
    Filed f;
    EXPECT_TRUE(f.host.file(2, "50 30 30 31 07 09 00 00 00 00 36 37 38 39").acknowledged());
    EXPECT_TRUE(f.host.file(3, "50 30 30 31 00 00 00 00 00 31 32 33 34 35").acknowledged());
    EXPECT_FALSE(f.sim.file("P001"));
    EXPECT_THAT(f.host.file(19, "").payload, is_hex("01 50 30 30 31 00*4 05 00 00 00"));
    EXPECT_TRUE(f.host.file(3, "50 30 30 31 01 05 00 00 00 36 37 38 39").acknowledged());
    const auto file = f.sim.file("P001");
    ASSERT_TRUE(file);
    EXPECT_EQ(file->type, 7);
    EXPECT_THAT(file->data, is_hex("31 32 33 34 35 36 37 38 39"));
    EXPECT_EQ(file->crc, 0x39383736U) << "the last 4 bytes, as they were announced";
    EXPECT_THAT(f.host.file(19, "").payload, is_hex("01 50 30 30 31 36 37 38 39 09 00 00 00"));
    EXPECT_THAT(f.host.file(4, "50 30 30 31").payload, is_hex("50 30 30 31 09 00 00 00 36 37 38 39"));
    EXPECT_THAT(f.host.file(5, "50 30 30 31 00 00 00 00").payload,
                is_hex("50 30 30 31 01 00 00 00 00 31 32 33 34 35 36 37 38 39"));
    EXPECT_THAT(f.host.file(5, "50 30 30 31 07 00 00 00").payload,
                is_hex("50 30 30 31 01 07 00 00 00 38 39"));
    EXPECT_THAT(f.host.file(19, "").payload, is_hex("00 50 30 30 31 36 37 38 39 09 00 00 00"));
}

TEST(Files, BlocksOutOfOrderAreRefusedAndTheWriteGoesOn) {
    Filed f;
    EXPECT_EQ(f.host.file(3, "50 30 30 31 01 00 00 00 00 31").error, 109); // nothing was announced
    ASSERT_TRUE(f.host.file(2, "50 30 30 31 00 05 00 00 00 00 32 33 34 35").acknowledged());
    struct Row {
        const char *what, *block;
        unsigned error;
    };
    for (const Row& row : {Row{"a gap", "50 30 30 31 00 01 00 00 00 31", 109},
                           Row{"another name", "50 30 30 32 00 00 00 00 00 31", 109},
                           Row{"too much", "50 30 30 31 01 00 00 00 00 31 32 33 34 35 36", 102},
                           Row{"last too early", "50 30 30 31 01 00 00 00 00 31", 103},
                           Row{"whole but not last", "50 30 30 31 00 00 00 00 00 31 32 33 34 35", 103},
                           Row{"flag 2", "50 30 30 31 02 00 00 00 00 31 32 33 34 35", 104}})
        EXPECT_EQ(f.host.file(3, row.block).error, row.error) << row.what;
    EXPECT_EQ(f.host.ask(0xA1, 12, test::hex("50 30 30 31 01 00 00 00 00 31 32 33 34 35")).error, 109);
    EXPECT_TRUE(f.host.file(3, "50 30 30 31 01 00 00 00 00 31 32 33 34 35").acknowledged());
    EXPECT_TRUE(f.sim.file("P001"));
}

TEST(Files, WrongEndIsRefusedAndTheOldFileStays) {
    Filed f;
    ASSERT_EQ(f.host.write("P001", test::hex("01 02 03 04")), 0U);
    ASSERT_TRUE(f.host.file(2, "50 30 30 31 00 04 00 00 00 01 09 09 09 09").acknowledged());
    EXPECT_EQ(f.host.file(3, "50 30 30 31 01 00 00 00 00 05 06 07 08").error, 110);
    EXPECT_THAT(f.sim.file("P001")->data, is_hex("01 02 03 04"));
}

TEST(Files, OverwriteFlagIsRespected) {
    Filed f;
    ASSERT_EQ(f.host.write("P001", test::hex("01 02 03 04"), 0, false), 0U);
    EXPECT_EQ(f.host.write("P001", test::hex("05 06 07 08"), 0, false), 107U);
    EXPECT_THAT(f.sim.file("P001")->data, is_hex("01 02 03 04"));
    EXPECT_EQ(f.host.write("P001", test::hex("05 06 07 08"), 0, true), 0U);
    EXPECT_THAT(f.sim.file("P001")->data, is_hex("05 06 07 08"));
}

TEST(Files, EmptyFileIsWholeOnceAnnounced) {
    Filed f;
    ASSERT_TRUE(f.host.file(2, "50 30 30 31 00 00 00 00 00 01 00*4").acknowledged());
    ASSERT_TRUE(f.sim.file("P001"));
    EXPECT_EQ(f.sim.file("P001")->crc, 0U);
}

TEST(Files, MemoryVolumeShrinksByWhatIsKept) {
    Filed f;
    EXPECT_THAT(f.host.file(18, "").payload, is_hex("00 00 00 01 00 00 00 01"));
    ASSERT_EQ(f.host.write("P001", test::hex("01 02 03 04")), 0U);
    EXPECT_THAT(f.host.file(18, "").payload, is_hex("00 00 00 01 FC FF FF 00"));
    // A file larger than what is left; a length that would wrap around.
    EXPECT_EQ(f.host.file(2, "50 30 30 32 00 FD FF FF 00 00 00*4").error, 106);
    EXPECT_EQ(f.host.file(2, "50 30 30 32 00 FF FF FF FF 00 00*4").error, 106);
    EXPECT_TRUE(f.host.file(2, "50 30 30 32 00 FC FF FF 00 00 00*4").acknowledged());
    EXPECT_TRUE(
        f.host.file(2, "50 30 30 32 00 FC FF FF 00 00 00*4").acknowledged()); // takes the first's place
    EXPECT_THAT(f.host.file(18, "").payload, is_hex("00 00 00 01 00 00 00 00"));
    EXPECT_TRUE(f.host.file(9, "").acknowledged()); // the end of the transfer gives it up
    EXPECT_THAT(f.host.file(18, "").payload, is_hex("00 00 00 01 FC FF FF 00"));
}

TEST(Files, DirectoryComesInBlocksOfOneType) {
    Filed f;
    EXPECT_EQ(f.host.file(7, "00 00").error, 109);
    for (int i = 0; i < 40; ++i) {
        const std::string name = "P0" + std::string(i < 10 ? "0" : "") + std::to_string(i);
        ASSERT_EQ(f.host.write(name, test::hex("31 32 33 34 35 36 37 38 39"), 1), 0U);
    }
    ASSERT_EQ(f.host.write("X001", test::hex("01 02 03 04"), 2), 0U);
    EXPECT_THAT(f.host.file(6, "01 FF").payload, is_hex("28 00"));
    const ByteBuffer first = f.host.file(7, "00 00").payload;
    ASSERT_EQ(first.size(), 5U + 32 * 13);
    EXPECT_THAT(Bytes(first).first(18), is_hex("00 00 00 20 00 50 30 30 30 01 09 00 00 00 36 37 38 39"));
    const ByteBuffer second = f.host.file(7, "20 00").payload;
    ASSERT_EQ(second.size(), 5U + 8 * 13);
    EXPECT_THAT(Bytes(second).first(9), is_hex("01 20 00 08 00 50 30 33 32"));
    EXPECT_THAT(f.host.file(7, "28 00").payload, is_hex("01 28 00 00 00"));
    EXPECT_EQ(f.host.file(7, "29 00").error, 104);
    EXPECT_THAT(f.host.file(6, "02 20").payload, is_hex("01 00"));
    EXPECT_THAT(f.host.file(6, "09 20").payload, is_hex("00 00"));
}

TEST(Files, AllNamesAreDeletedOrNone) {
    Filed f;
    for (const char* name : {"P001", "P002", "P003"})
        ASSERT_EQ(f.host.write(name, test::hex("01 02 03 04")), 0U);
    EXPECT_EQ(f.host.file(1, "02 00 50 30 30 31 50 30 30 39").error, 108);
    EXPECT_EQ(f.sim.files().size(), 3U);
    EXPECT_TRUE(f.host.file(1, "02 00 50 30 30 31 50 30 30 33").acknowledged());
    ASSERT_EQ(f.sim.files().size(), 1U);
    EXPECT_EQ(f.sim.files()[0].name, "P002");
    EXPECT_TRUE(f.host.file(1, "00 00").acknowledged());
}

// A configuration file of that size with its CRC-16, worked out bit by bit.
ByteBuffer configuration(std::size_t size, std::string_view controller) {
    ByteBuffer data(size - 2);
    std::copy(controller.begin(), controller.end(), data.begin() + 1);
    ByteWriter(data).u16(qm::test::crc16(Bytes(data)));
    return data;
}

TEST(Files, ConfigurationIsCheckedAndNamesTheController) {
    for (const std::size_t size : {38U, 94U}) {
        Filed f{Simulator({.type = static_cast<std::uint16_t>(size == 38 ? 0x0051 : 0x0262)})};
        ASSERT_EQ(f.host.write("C000", configuration(size, "LOBBY"), 1, true, true), 0U) << size;
        EXPECT_EQ(f.sim.state().name, "LOBBY");
        ByteBuffer spoilt = configuration(size, "OTHER");
        spoilt[20] ^= 1;
        EXPECT_EQ(f.host.write("C000", spoilt, 1, true, true), 110U) << size;
        EXPECT_EQ(f.host.write("C000", configuration(40, "OTHER"), 1, true, true), 110U);
        EXPECT_EQ(f.sim.state().name, "LOBBY");
        EXPECT_EQ(f.sim.file("C000")->data.size(), size);
    }
    Filed f;
    ASSERT_EQ(f.host.write("C000", configuration(94, ""), 1, true, true), 0U);
    EXPECT_EQ(f.host.file(4, "43 30 30 30").error, 108); // it is no ordinary file
    EXPECT_EQ(f.host.file(13, "43 30 30 30").payload.size(), 12U);
    EXPECT_EQ(f.host.file(14, "43 30 30 30 00 00 00 00").payload.size(), 9U + 94U);
    EXPECT_TRUE(f.host.file(0, "").acknowledged());
    EXPECT_TRUE(f.sim.file("C000")); // formatting leaves it alone
}

TEST(Files, ConfigurationIsDeletedByANameThatLacksItsLastByte) {
    Filed f;
    for (const char* name : {"A001", "C000", "C100", "C101"})
        ASSERT_EQ(f.host.write(name, configuration(94, ""), 1, true, true), 0U);
    EXPECT_EQ(f.host.file(10, "01 00 43 31 30").error, 108); // could be either
    EXPECT_TRUE(f.host.file(10, "02 00 41 30 30 31 43 30 30").acknowledged());
    ASSERT_EQ(f.sim.files().size(), 2U);
    EXPECT_EQ(f.sim.files()[0].name, "C100");
    EXPECT_TRUE(f.host.file(10, "00").acknowledged());
}

TEST(Files, FirmwareMustBeThereToBeActivated) {
    Filed f;
    ASSERT_EQ(f.host.write("F001", test::hex("01 02 03 04")), 0U);
    EXPECT_TRUE(f.host.control(3, "46 30 30 31").acknowledged());
    EXPECT_EQ(f.sim.state().firmware, "F001");
}

TEST(Files, OutliveARestart) {
    Filed f;
    ASSERT_EQ(f.host.write("P001", test::hex("01 02 03 04")), 0U);
    ASSERT_TRUE(f.host.control(1, "").acknowledged());
    EXPECT_TRUE(f.sim.file("P001"));
}

} // namespace
} // namespace qm::sim
