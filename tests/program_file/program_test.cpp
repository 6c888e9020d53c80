// Headers, names, play periods and the area list.
#include "fixture.h"

namespace qm::test {
namespace {

TEST_F(Program, OfGeneration5WithoutAreasIs27Bytes) {
    const HVprogramHeader header{0x11, 42, 0x22, 0x33, 0x44, 0x5566, 0x77, 0x0102, 3, 4, 0x0506, 7, 8};
    ASSERT_EQ(program_addProgram(&header), 0);
    const File file = integrate_g5();
    EXPECT_EQ(file.name, "P042");
    EXPECT_EQ(file.type, 0);
    EXPECT_EQ(file.bytes.size(), 27U);
    EXPECT_THAT(Bytes(file.bytes).first(23),
                is_hex("11 50 30 34 32 22 33 44 66 55 77 02 01 03 04 06 05 07 08 "
                       "00 00 00 00"));
    EXPECT_EQ(ByteReader(Bytes(file.bytes).last(4)).u32(), file.crc);
    EXPECT_TRUE(parsed_g5().areas.empty());
    EXPECT_TRUE(std::filesystem::exists("dataFantx.bin"));
    EXPECT_EQ(std::filesystem::file_size("dataFantx.bin"), 27U);
}

TEST_F(Program, OfGeneration6WithoutAreasIs37And17Bytes) {
    const HVprogramHeader_G6 header{0x11, 5,    0x22,   0x33, 0x44,   0x5566, 0x77, 0x88,   0x99AA, 0xBBCC,
                                    0xDD, 0xEE, 0x0F10, 0x12, 0x1314, 0x15,   0x16, 0x1718, 0x19,   0x1A};
    ASSERT_EQ(program_addProgram_G6(&header), 0);
    const File file = integrate_g6();
    EXPECT_EQ(file.name, "P005");
    EXPECT_EQ(file.dataName, "D005");
    EXPECT_EQ(file.type, 0);
    EXPECT_EQ(file.dataType, 9);
    EXPECT_EQ(file.bytes.size(), 37U);
    EXPECT_THAT(Bytes(file.bytes).first(33),
                is_hex("11 50 30 30 35 22 33 44 66 55 77 88 AA 99 CC BB DD EE 10 0F "
                       "12 14 13 15 16 18 17 19 1A 00 00 00 00"));
    EXPECT_EQ(file.data.size(), 17U);
    EXPECT_THAT(Bytes(file.data).first(13), is_hex("09 44 30 30 35 00*8"));
    EXPECT_TRUE(parsed_g6().areas.empty());
    EXPECT_FALSE(std::filesystem::exists("dataFantx.bin"));
}

TEST_F(Program, NamesFilesByTheProgramID) {
    const struct {
        Ouint32 id;
        const char *name, *dataName; // null: refused
    } cases[] = {{0, "P000", "D000"},       {7, "P007", "D007"},
                 {42, "P042", "D042"},      {999, "P999", "D999"},
                 {1000, "1000", "D000"},    {4321, "4321", "D321"},
                 {9999, "9999", "D999"},    {10000, nullptr, nullptr},
                 {12345, nullptr, nullptr}, {4294967196U, nullptr, nullptr}};
    for (const auto& c : cases) {
        const HVprogramHeader header = program_header(c.id);
        EXPECT_EQ(program_addProgram(&header), c.name ? 0 : -1) << c.id;
        if (c.name) {
            EXPECT_EQ(integrate_g5().name, c.name);
        }
        program_deleteProgram();
        const HVprogramHeader_G6 header6 = program_header_g6(c.id);
        EXPECT_EQ(program_addProgram_G6(&header6), c.name ? 0 : -1) << c.id;
        if (c.name) {
            EXPECT_EQ(integrate_g6().dataName, c.dataName);
        }
        program_deleteProgram_G6();
    }
}

TEST_F(Program, KeepsItsFileNameInGeneration5WhenItsHeaderChanges) {
    const HVprogramHeader first = program_header(1), second = program_header(2), bad = program_header(10000);
    program_addProgram(&first);
    EXPECT_EQ(program_changeProgramParams(&bad), -1);
    EXPECT_EQ(program_changeProgramParams(&second), 0);
    const File file = integrate_g5();
    EXPECT_EQ(file.name, "P001");
    EXPECT_THAT(Bytes(file.bytes).subspan(1, 4), is_hex("50 30 30 32"));
    program_deleteProgram();
    const HVprogramHeader_G6 first6 = program_header_g6(1), second6 = program_header_g6(2);
    program_addProgram_G6(&first6);
    program_changeProgramParams_G6(&second6);
    EXPECT_EQ(integrate_g6().name, "P002");
}

TEST_F(Program, WritesTheUsedPlayPeriodsAndForcesThePriority) {
    HVprogramHeader header = program_header(1);
    header.ProgramPriority = 5;
    program_addProgram(&header);
    HVprogramppGrp_G56 periods{};
    periods.playTimeGrpNum = 2;
    periods.timeGrp[0] = {8, 0, 0, 12, 30, 0};
    periods.timeGrp[1] = {14, 0, 1, 18, 59, 59};
    periods.timeGrp[2] = {1, 1, 1, 1, 1, 1};
    EXPECT_EQ(program_addPlayPeriodGrp(&periods), 0);
    EXPECT_THAT(Bytes(integrate_g5().bytes).subspan(19, 16),
                is_hex("01 08 00 00 0C 1E 00 0E 00 01 12 3B 3B 00*3"));
    EXPECT_EQ(parsed_g5().header.priority, 1);
    periods.playTimeGrpNum = 9;
    EXPECT_EQ(program_addPlayPeriodGrp(&periods), -1) << "the record holds eight";
    periods.playTimeGrpNum = 0;
    EXPECT_EQ(program_addPlayPeriodGrp(&periods), 0);
    EXPECT_TRUE(parsed_g5().periods.empty());
    EXPECT_EQ(parsed_g5().header.priority, 0);
}

TEST_F(Program, CountsReplacedAreasToo) {
    for (const Ouint16 id : {Ouint16{1}, Ouint16{2}}) add_area(id, ePicturesArea, {1, 2, 30, 20});
    add_area(1, eTimeClockArea, {0, 0, 8, 8});
    sim::StoredProgram program = parsed_g5();
    EXPECT_EQ(program.area_count, 3);
    ASSERT_EQ(program.areas.size(), 2U);
    EXPECT_EQ(program.areas[0].type, sim::AreaType::pictures);
    EXPECT_EQ(program.areas[0].rect, (sim::Rect{1, 2, 30, 20}));
    EXPECT_EQ(program.areas[1].type, sim::AreaType::time) << "the new area stands at the end";
    EXPECT_EQ(program_deleteArea(7), 0);
    EXPECT_EQ(program_deleteArea(2), 0);
    program = parsed_g5();
    EXPECT_EQ(program.area_count, 2);
    EXPECT_EQ(program.areas.size(), 1U);
    EXPECT_EQ(program_deleteArea(65535), 0);
    program = parsed_g5();
    EXPECT_EQ(program.area_count, 0);
    EXPECT_TRUE(program.areas.empty());
}

TEST_F(Program, LaysAMovedAreaOutAnew) {
    const HVpageHeader page = page_header();
    add_area(4, ePicturesArea, {0, 0, 200, 16});
    program_picturesAreaAddTxt(4, "several words in a row", kFont, &page);
    EXPECT_EQ(parsed_g5().areas[0].pages.size(), 1U);
    EXPECT_EQ(program_MoveArea(4, 3, 5, 64, 16), 0);
    const sim::StoredProgram program = parsed_g5();
    EXPECT_EQ(program.areas[0].rect, (sim::Rect{3, 5, 64, 16}));
    EXPECT_GT(program.areas[0].pages.size(), 1U);
    EXPECT_EQ(printed_by([] { EXPECT_EQ(program_MoveArea(5, 0, 0, 1, 1), 29); }),
              "Error:Wrong areaID.This area does not exist.\n");
    EXPECT_EQ(program_MoveArea(4, -1, 0, 1, 1), -1);
    EXPECT_EQ(program_MoveArea(4, 0, 0, 65536, 1), -1);
}

TEST_F(Program, OfGeneration6MovesAndDeletesItsAreas) {
    begin(kSix);
    for (const auto& [id, type] : {std::pair{1, ePicturesArea}, {2, eTimeClockArea}, {3, ePicturesArea}})
        add_area(static_cast<Ouint16>(id), static_cast<Ouint8>(type), {0, 0, 32, 16});
    add_area(9, eGlobalBackGroundArea, {0, 0, 64, 32});
    EXPECT_EQ(program_MoveArea_G6(2, 8, 4, 16, 8), 0);
    EXPECT_EQ(program_deleteArea_G6(1), 0);
    sim::StoredProgram program = parsed_g6();
    EXPECT_EQ(program.area_count, 3);
    ASSERT_EQ(program.areas.size(), 3U);
    EXPECT_EQ(program.areas[0].rect, (sim::Rect{8, 4, 16, 8}));
    EXPECT_EQ(program.areas[0].type, sim::AreaType::time) << "a move keeps the type";
    EXPECT_EQ(program.areas[1].rect, (sim::Rect{0, 0, 32, 16}));
    program_deleteArea_G6(9);
    EXPECT_TRUE(parsed_g6().background) << "once there was one";
    EXPECT_EQ(program_deleteArea_G6(65535), 0);
    program = parsed_g6();
    EXPECT_EQ(program.area_count, 0);
    EXPECT_TRUE(program.areas.empty());
}

TEST_F(Program, OfGeneration6GetsItsPriorityFromPlayPeriods) {
    HVprogramHeader_G6 header = program_header_g6(1);
    header.ProgramPriority = 7;
    program_addProgram_G6(&header);
    HVprogramppGrp_G56 periods{};
    periods.playTimeGrpNum = 1;
    program_addPlayPeriodGrp_G6(&periods);
    EXPECT_EQ(int{integrate_g6().bytes[6]}, 1);
    periods.playTimeGrpNum = 0;
    program_addPlayPeriodGrp_G6(&periods);
    EXPECT_EQ(int{integrate_g6().bytes[6]}, 0);
}

} // namespace
} // namespace qm::test
