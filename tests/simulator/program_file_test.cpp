// Program files, read strictly: every byte worked out by hand.
#include "simulator/playback/program_parser.h"

#include "program_samples.h"

namespace qm::sim {
namespace {

using test::sealed;
using testing::HasSubstr;
using namespace std::chrono_literals;

constexpr PixelFormat kSingle8{TransferMode::planes8, ScreenColor::single};
constexpr PixelFormat kDual8{TransferMode::planes8, ScreenColor::dual};
constexpr PixelFormat kDual32{TransferMode::planes32, ScreenColor::dual};

StoredProgram good(ParsedProgram parsed) {
    if (const auto* error = std::get_if<std::string>(&parsed)) {
        ADD_FAILURE() << *error;
        return {};
    }
    return std::get<StoredProgram>(std::move(parsed));
}

std::string error_of(const ParsedProgram& parsed) {
    const auto* error = std::get_if<std::string>(&parsed);
    return error ? *error : "accepted";
}

TEST(ProgramFileOfGeneration5, IsReadWhole) {
    const StoredProgram program = good(parse_program(test::file_g5(), kSingle8));
    EXPECT_EQ(program.header.name, "P007");
    EXPECT_EQ(program.header.play_times, 2);
    EXPECT_EQ(program.header.time_span, 10);
    EXPECT_EQ(program.header.first_day.year, 2024);
    EXPECT_EQ(program.header.last_day.month, 12);
    ASSERT_EQ(program.periods.size(), 2U);
    EXPECT_EQ(program.periods[0].first, 8h + 30min);
    EXPECT_EQ(program.periods[1].last, 2h);
    EXPECT_FALSE(program.background);
    EXPECT_EQ(program.area_count, 2);
    EXPECT_EQ(program.areas.size(), 1U);
}

TEST(ProgramFileOfGeneration5, TellsBordersFromWhatFollows) {
    const StoredProgram program = good(parse_program(test::file_g5(), kSingle8));
    ASSERT_TRUE(program.border);
    EXPECT_EQ(program.border->pixels, qm::test::hex("0F F0 F0 0F"));
    EXPECT_EQ(program.border->length, 16);
    EXPECT_EQ(program.border->thickness, 2);
    EXPECT_EQ(program.border->speed, 4);
    ASSERT_EQ(program.areas.size(), 1U);
    const ProgramArea& area = program.areas[0];
    ASSERT_TRUE(area.border);
    EXPECT_EQ(area.border->pixels, qm::test::hex("55"));
    EXPECT_EQ(area.border->length, 8);
    EXPECT_EQ(area.border->move_step, 3);
    EXPECT_EQ(area.inside(), (Rect{4, 2, 8, 4}));
    ASSERT_EQ(area.pages.size(), 2U);
    EXPECT_EQ(area.pages[1].valid_len, 3);
    EXPECT_EQ(area.pages[1].pixels, qm::test::hex("F7 FF FF*6"));
}

// Each spoils one field of a clock that is read otherwise.
TEST(ProgramFileOfGeneration5, RefusesClocksThatAreWrongAnywhere) {
    const ByteBuffer whole =
        qm::test::hex("00 50 30 30 30 00*14 00 00 00 01 23 00 00 00  02 01 00 02 00 08 00 02 00"
                      " 00 00 01 01  0A 07 00 01 00 00 01 00  01 01 00 01 00 04 00 00 00"
                      "  FF FF FF FF  7F");
    good(parse_program(sealed(whole), kSingle8));
    const struct {
        const char* what;
        std::size_t at;
        std::uint8_t value;
    } rows[] = {{"border", 36, 1},        {"kind", 37, 2},
                {"units", 38, 2},         {"sets", 39, 0},
                {"unknown unit", 40, 11}, {"no digits", 40, 0},
                {"beside", 41, 8},        {"below", 43, 2},
                {"no such set", 45, 1},   {"too many glyphs", 48, 2},
                {"position", 53, 3}};
    for (const auto& row : rows) {
        ByteBuffer spoilt = whole;
        spoilt.at(row.at) = row.value;
        EXPECT_NE(error_of(parse_program(sealed(spoilt), kSingle8)), "accepted") << row.what;
    }
}

// Lit pixels look like midnight, and a period that begins at 1 o'clock like a border.
TEST(ProgramFileOfGeneration5, CountsPlayPeriodsAboveABorderOfLitPixels) {
    const std::string head = "00 50 30 30 30 00*14 01 08 00 00 09 00 00";
    const std::string border = " 01 00 00 00 02 00 00 00*24";
    for (const auto& [periods, expected] : {std::pair{"", 1U}, std::pair{" 01 00 00 02 00 00", 2U}}) {
        const StoredProgram program = good(parse_program(sealed(head + periods + border + " 00 00"), kDual8));
        EXPECT_EQ(program.periods.size(), expected);
        ASSERT_TRUE(program.border);
        EXPECT_EQ(program.border->pixels, ByteBuffer(24));
    }
}

TEST(ProgramFileOfGeneration6, IsReadWithItsDataFile) {
    const test::Files files = test::files_g6();
    const StoredProgram program = good(parse_program(files.program, files.data, kDual32));
    EXPECT_EQ(program.header.style, 1);
    EXPECT_EQ(program.header.time_span, 60);
    EXPECT_EQ(program.header.schedule, 3);
    EXPECT_EQ(program.header.time_attribute_offset, 6);
    EXPECT_EQ(program.header.week, 0x7F);
    EXPECT_TRUE(program.background);
    ASSERT_EQ(program.areas.size(), 2U);
    EXPECT_EQ(program.areas[0].type, AreaType::background);
    EXPECT_EQ(program.areas[0].transparency, 100);
    EXPECT_EQ(program.areas[0].pages.at(0).pixels, qm::test::hex("FF FF FF 7F FF*4"));
    ASSERT_TRUE(program.areas[1].sound);
    EXPECT_EQ(program.areas[1].sound->replay_delay, 7U);
    EXPECT_EQ(program.areas[1].sound->text, qm::test::hex("48 69"));
    EXPECT_EQ(program.areas[1].pages.at(0).pixels, qm::test::hex("FF*4 FE FF FF FF"));
}

// A byte of a file changed, and the file sealed anew.
struct Spoilt {
    const char* name;
    bool data;
    std::size_t at;
    std::uint8_t value;
    const char* words;
};

class SpoiltProgram : public testing::TestWithParam<Spoilt> {};

TEST_P(SpoiltProgram, IsRefusedWithWords) {
    test::Files files = test::files_g6();
    ByteBuffer& file = GetParam().data ? files.data : files.program;
    file.resize(file.size() - 4);
    file.at(GetParam().at) = GetParam().value;
    file = sealed(std::move(file));
    EXPECT_THAT(error_of(parse_program(files.program, files.data, kDual32)), HasSubstr(GetParam().words));
}

INSTANTIATE_TEST_SUITE_P(
    , SpoiltProgram,
    testing::Values(
        Spoilt{"PeriodFlag", false, 29, 2, "byte 29, play-period flag: 0 or 1 expected, 2 found"},
        Spoilt{"BorderFlag", false, 30, 9, "byte 30, border flag: 0 or 1 expected, 9 found"},
        Spoilt{"BackgroundFlag", false, 31, 2, "byte 31, background flag: 0 or 1 expected, 2 found"},
        Spoilt{"NoBackground", false, 31, 0, "background flag: 1 with a background area expected"},
        Spoilt{"AreaCount", false, 32, 1, "area count: the number of areas or more expected, 1 found"},
        Spoilt{"AreaLength", false, 33, 0xFF, "byte 33, area length: an area inside the file expected"},
        Spoilt{"AreaType", false, 37, 1, "byte 37, area type: 0, 2 or 11 expected, 1 found"},
        Spoilt{"AreaWidth", false, 42, 33, "length of a page: the pixels of the drawing rectangle expected"},
        Spoilt{"Reserved", false, 51, 7, "byte 51, reserved bytes of an area: 0 expected, 7 found"},
        Spoilt{"PageCount", false, 56, 0, "page count: pages up to the end of the area expected, 0 found"},
        Spoilt{"PageRecord", false, 58, 27, "byte 58, page record length: 26 expected, 27 found"},
        Spoilt{"ValidLen", false, 69, 33, "ValidLen of a page: the area's width or less expected"},
        Spoilt{"Offset", false, 80, 13, "byte 80, data offset of a page"},
        Spoilt{"Length", false, 84, 7, "length of a page: the pixels of the drawing rectangle expected"},
        Spoilt{"DataType", true, 0, 8, "data file, byte 0, type: 9 expected, 8 found"},
        Spoilt{"DataName", true, 4, 0x36, "data file, byte 1, name"},
        Spoilt{"DataZeros", true, 9, 1, "data file, byte 5, reserved bytes"}),
    [](const auto& spoilt) { return std::string(spoilt.param.name); });

TEST(SpoiltProgramFile, NeverPassesItsCrc) {
    const ByteBuffer file = test::file_g5();
    for (std::size_t i = 0; i < file.size(); ++i) {
        ByteBuffer spoilt = file;
        spoilt[i] ^= 0x10U;
        EXPECT_THAT(error_of(parse_program(spoilt, kSingle8)), HasSubstr("CRC")) << "byte " << i;
    }
    const test::Files files = test::files_g6();
    for (std::size_t i = 0; i < files.data.size(); ++i) {
        ByteBuffer spoilt = files.data;
        spoilt[i] ^= 0x10U;
        EXPECT_THAT(error_of(parse_program(files.program, spoilt, kDual32)), HasSubstr("CRC"))
            << "byte " << i;
    }
}

// Without a screen border, that is: where nothing else follows, its pixels might be all there is.
TEST(SpoiltProgramFile, IsNotTakenWhenItEndsEarlyOrLate) {
    const test::Files files = test::files_g6();
    const auto error_at = [&](const ByteBuffer& file, std::size_t length) {
        ByteBuffer body(file.begin(), file.end() - 4);
        body.resize(length);
        const ByteBuffer cut = sealed(std::move(body));
        return error_of(&file == &files.data ? parse_program(files.program, cut, kDual32)
                                             : parse_program(cut, files.data, kDual32));
    };
    for (const ByteBuffer* file : {&files.program, &files.data})
        for (std::size_t length = 0; length <= file->size(); ++length)
            EXPECT_EQ(error_at(*file, length) == "accepted", length == file->size() - 4)
                << length << " bytes";
    EXPECT_THAT(error_at(files.data, files.data.size() - 3),
                HasSubstr("data file: no bytes behind the last page expected, 1 found"));
    for (std::size_t length = 0; length < 4; ++length)
        EXPECT_EQ(error_of(parse_program(ByteBuffer(length), kSingle8)), "program file: too short for a CRC");
}

// Whatever stands in it, a file is read or refused.
TEST(SpoiltProgramFile, IsHarmless) {
    const test::Files files = test::files_g6();
    const auto spoil = [](const ByteBuffer& file, std::size_t i, std::uint8_t value) {
        ByteBuffer body(file.begin(), file.end() - 4);
        body[i] = value;
        return sealed(std::move(body));
    };
    const std::uint8_t values[] = {0, 1, 2, 0x7F, 0xFF};
    for (const std::uint8_t value : values) {
        for (std::size_t i = 0; i + 4 < files.program.size(); ++i)
            (void)parse_program(spoil(files.program, i, value), files.data, kDual32);
        const ByteBuffer file = test::file_g5();
        for (std::size_t i = 0; i + 4 < file.size(); ++i)
            (void)parse_program(spoil(file, i, value), kSingle8);
    }
}

// Every place of the border could be its end.
TEST(SpoiltProgramFile, DoesNotKeepTheReaderBusy) {
    ByteBuffer body = qm::test::hex("00 50 30 30 30 00*14 00  01 00 00 00 01 00 00");
    const std::size_t end = 64000;
    while (body.size() + 6 < end) {
        ByteWriter out(body);
        out.u8(0).u8(255).u32(static_cast<std::uint32_t>(end - body.size() - 4));
    }
    ByteWriter(body).zeros(end - body.size());
    for (int i = 0; i < 100; ++i) ByteWriter(body).u32(65535).bytes(ByteBuffer(65535, 2));
    EXPECT_NE(error_of(parse_program(sealed(body), kSingle8)), "accepted");
}

} // namespace
} // namespace qm::sim
