// What a program refuses, and what it survives.
#include "fixture.h"
#include "outcome.h"

#include <fstream>
#include <functional>
#include <malloc.h>

namespace qm::test {
namespace {

struct NamedCall {
    const char* name;
    std::function<int()> call;
};
#define CALL(name, ...)                                                                                      \
    NamedCall {                                                                                              \
#name, [] { return name(__VA_ARGS__); }                                                              \
    }

const HVpageHeader kPage = page_header();
const HVpageHeader_G6 kPage6 = page_header_g6();
const HVareaframeHeader kBorder{};
const HVtimeAreaData_G56 kContent = time_content();
const HVAnalogClockHeader_G56 kHands{};
const ClockColor_G56 kColors{};
const HVPicAreaSoundHeader_G6 kSound{};
const HVTimeAreaBattle_G6 kBattle{};
const Ouint8 kByte = 0;
getPageData g_preview;

const NamedCall kCallsOnAreas[] = {
    CALL(program_picturesAreaAddTxt, 9, "x", kFont, &kPage),
    CALL(program_fontPath_picturesAreaAddTxt, 9, "x", "f.ttf", &kPage),
    CALL(program_picturesAreaChangeTxt, 9, "x", &kPage),
    CALL(program_fontPath_picturesAreaChangeTxt, 9, "x", &kPage),
    CALL(program_pictureAreaAddPic, 9, 1, &kPage, "x.png"),
    CALL(program_picturesAreaAddFrame, 9, &kBorder, "x.png"),
    CALL(program_pictureAreaRemoveFrame, 9),
    CALL(program_pictureAreaGetOnePage, 9, 0, &g_preview),
    CALL(program_timeAreaAddContent, 9, &kContent),
    CALL(program_fontPath_timeAreaAddContent, 9, &kContent),
    CALL(program_timeAreaChangeContent, 9, &kContent),
    CALL(program_timeAreaAddAnalogClock, 9, &kHands, eLINE, &kColors),
    CALL(program_timeAreaChangeAnalogClock, 9, &kHands, eLINE, &kColors),
    CALL(program_timeAreaChangeDialPic, 9, "x.png"),
    CALL(program_timeAreaChangeDialPicAdd_G56, 9, &kByte, 1),
    CALL(program_timeAreaRemoveDialPic, 9),
};
const NamedCall kCallsOnAreas6[] = {
    CALL(program_picturesAreaAddTxt_G6, 9, "x", kFont, &kPage6),
    CALL(program_fontPath_picturesAreaAddTxt_G6, 9, "x", "f.ttf", &kPage6),
    CALL(program_picturesAreaChangeTxt_G6, 9, "x", &kPage6),
    CALL(program_fontPath_picturesAreaChangeTxt_G6, 9, "x", &kPage6),
    CALL(program_pictureAreaAddPic_G6, 9, 1, &kPage6, "x.png"),
    CALL(program_pictureAreaChangePic_G6, 9, 1, &kPage6, "x.png"),
    CALL(program_pictureAreaEnableSound_G6, 9, kSound, "x"),
    CALL(program_pictureAreaChangeSoundSettings_G6, 9, kSound, "x"),
    CALL(program_pictureAreaDisableSound_G6, 9),
    CALL(program_timeAreaAddContent_G6, 9, &kContent),
    CALL(program_fontPath_timeAreaAddContent_G6, 9, &kContent),
    CALL(program_timeAreaChangeContent_G6, 9, &kContent),
    CALL(program_timeAreaSetBattleTime_G6, 9, &kBattle),
    CALL(program_timeAreaCancleBattleTime_G6, 9),
    CALL(program_timeAreaAddAnalogClock_G6, 9, &kHands, eLINE, &kColors),
    CALL(program_timeAreaChangeAnalogClock_G6, 9, &kHands, eLINE, &kColors),
    CALL(program_timeAreaChangeDialPic_G6, 9, "x.png"),
    CALL(program_timeAreaRemoveDialPic_G6, 9),
    CALL(program_backGroundColor_G6, 9, &kPage6, eRed),
    CALL(program_backGroundPic_G6, 9, 1, &kPage6, "x.png"),
};

void expect_unknown_area(std::span<const NamedCall> calls) {
    for (const NamedCall& c : calls) {
        EXPECT_EQ(printed_by([&] { EXPECT_EQ(c.call(), -1) << c.name; }),
                  "Error:" + std::string(c.name) + "==>Can not find the area.please check areaID.\n");
        EXPECT_STREQ(qm_last_error(), "The program has no area 9.") << c.name;
    }
}

// Those of generation 5 would not fit a program of the other.
TEST_F(Program, RefusesUnknownAreasByName) {
    expect_unknown_area(kCallsOnAreas);
    program_deleteProgram();
    expect_unknown_area(kCallsOnAreas6);
}

TEST_F(Program, SaysWhatAnAreaOfThatKindDoesNotTake) {
    enum : Ouint16 { pictures, clock, background };
    use(kSix);
    add_area(pictures, ePicturesArea, {0, 0, 16, 8});
    add_area(clock, eTimeClockArea, {0, 0, 16, 8});
    add_area(background, eGlobalBackGroundArea, {0, 0, 16, 8});
    const struct {
        NamedCall c;
        const char* takes;
    } cases[] = {
        {CALL(program_picturesAreaAddTxt_G6, background, "x", kFont, &kPage6), "text"},
        {CALL(program_fontPath_picturesAreaAddTxt_G6, clock, "x", kFont, &kPage6), "text"},
        {CALL(program_picturesAreaChangeTxt_G6, clock, "x", &kPage6), "text"},
        {CALL(program_pictureAreaAddPic_G6, clock, 1, &kPage6, "x.png"), "picture"},
        {CALL(program_pictureAreaDisableSound_G6, clock), "speech"},
        {CALL(program_picturesAreaAddFrame, clock, &kBorder, "x.png"), "border"},
        {CALL(program_timeAreaAddContent_G6, pictures, &kContent), "clock"},
        {CALL(program_timeAreaChangeDialPicAdd_G56, background, &kByte, 1), "clock"},
        {CALL(program_backGroundColor_G6, pictures, &kPage6, eRed), "background"},
    };
    for (const auto& [c, takes] : cases) {
        const std::string taken = std::string(" takes no ").append(takes).append(".");
        EXPECT_EQ(printed_by([&c = c] { EXPECT_EQ(c.call(), -1) << c.name; }),
                  std::string("Error:").append(c.name).append("==>The area").append(taken).append("\n"));
        EXPECT_THAT(qm_last_error(), testing::AllOf(testing::StartsWith("Area "), testing::EndsWith(taken)));
    }
}

// They are for both generations: which one the program is of is still open.
TEST_F(Program, IsNotMadeByCallsForBothGenerations) {
    const NamedCall calls[] = {CALL(program_timeAreaChangeDialPicAdd_G56, 0, &kByte, 1),
                               CALL(program_picturesAreaAddFrame, 0, &kBorder, "x.png"),
                               CALL(program_pictureAreaRemoveFrame, 0),
                               CALL(program_pictureAreaGetOnePage, 0, 0, &g_preview)};
    const HVprogramHeader_G6 header = program_header_g6(1);
    for (const NamedCall& c : calls) {
        EXPECT_THAT(printed_by([&] { EXPECT_EQ(c.call(), -1) << c.name; }),
                    testing::HasSubstr("Can not find the area"));
        EXPECT_EQ(program_addProgram_G6(&header), 0);
        program_deleteProgram();
    }
}

TEST_F(Program, RefusesNullPointersAndUnknownKinds) {
    const HVareaHeader unknown = area_header(3, 0, 0, 8, 8);
    const HVareaHeader_G6 unknown6 = area_header_g6(10, 0, 0, 8, 8);
    EXPECT_TRUE(refuses_an_argument(program_addProgram(nullptr)));
    EXPECT_TRUE(refuses_an_argument(program_addPlayPeriodGrp(nullptr)));
    EXPECT_TRUE(refuses_an_argument(program_addFrame(nullptr, "x")));
    EXPECT_TRUE(refuses_an_argument(program_AddArea(0, nullptr)));
    EXPECT_TRUE(refuses_an_argument(program_AddArea(0, &unknown)));
    EXPECT_TRUE(refuses_an_argument(program_IntegrateProgramFile(nullptr)));
    EXPECT_TRUE(refuses_an_argument(program_freeBuffer(nullptr)));
    EXPECT_TRUE(refuses_an_argument(program_pictureAreaGetOnePage(0, 0, nullptr)));
    const HVprogramHeader tooHigh = program_header(10000);
    const HVprogramppGrp_G56 tooMany{9, {}};
    const HVareaHeader tooWide = area_header(ePicturesArea, 0, 0, 32768, 8);
    HVtimeAreaData_G56 fontless = time_content();
    fontless.fontName = nullptr;
    EXPECT_TRUE(refuses_an_argument(program_addProgram(&tooHigh)));
    EXPECT_TRUE(refuses_an_argument(program_addPlayPeriodGrp(&tooMany)));
    EXPECT_TRUE(refuses_an_argument(program_AddArea(0, &tooWide)));
    EXPECT_TRUE(refuses_an_argument(program_timeAreaAddContent(0, &fontless)));
    EXPECT_EQ(parsed_g5().area_count, 0);
    begin(kSix);
    EXPECT_TRUE(refuses_an_argument(program_addArea_G6(0, &unknown6)));
    EXPECT_EQ(parsed_g6().area_count, 0);
}

TEST_F(Program, RefusesCallsOfTheOtherGeneration) {
    const HVprogramHeader header = program_header(1);
    const HVprogramHeader_G6 header6 = program_header_g6(1);
    program_addProgram(&header);
    HVprogram_G6 files{};
    EXPECT_EQ(program_addProgram_G6(&header6), -1);
    EXPECT_STREQ(qm_last_error(), "The call is for generation 6, and the program of the other.");
    EXPECT_EQ(program_IntegrateProgramFile_G6(&files), -1);
    EXPECT_TRUE(files.fileAddre == nullptr);
    program_deleteProgram();
    program_addProgram_G6(&header6);
    EXPECT_EQ(program_addProgram(&header), -1);
}

TEST_F(Program, PreviewsPagesAsPng) {
    const HVpageHeader page = page_header();
    add_area(0, ePicturesArea, {0, 0, 20, 10});
    program_picturesAreaAddTxt(0, "x", kFont, &page);
    program_pictureAreaAddPic(0, 1, &page, "gone.png");
    program_pictureAreaAddPic(0, 2, &page, "gone.png");
    getPageData preview{};
    ASSERT_EQ(program_pictureAreaGetOnePage(0, 0, &preview), 0);
    EXPECT_EQ(int{preview.allPageNub}, 3);
    // Signature, header chunk, width 20, height 10.
    EXPECT_THAT(Bytes(preview.fileAddre, preview.pageLen).first(24),
                is_hex("89 50 4E 47 0D 0A 1A 0A 00 00 00 0D 49 48 44 52 00 00 00 14 00 00 00 0A"));
    const struct {
        int page;
        const char *message, *reason;
    } cases[] = {
        {1, "Error:The picture is not exist.\n", "Picture gone.png: No such file or directory."},
        {2, "Error:The last picture is not exist.\n", "Picture gone.png: No such file or directory."},
        {3, "Error:pageNum out of range.\n",
         "Argument pageNum is 3, and the area has 3 pages, counted from 0."},
        {-1, "Error:pageNum out of range.\n",
         "Argument pageNum is -1, and the area has 3 pages, counted from 0."}};
    for (const auto& c : cases) {
        EXPECT_EQ(printed_by([&] { EXPECT_EQ(program_pictureAreaGetOnePage(0, c.page, &preview), -1); }),
                  c.message);
        EXPECT_STREQ(qm_last_error(), c.reason);
        EXPECT_TRUE(preview.fileAddre == nullptr) << c.page;
        EXPECT_EQ(int{preview.allPageNub}, 3) << c.page;
    }
}

TEST_F(Program, SurvivesBadPicturesAndFonts) {
    std::ofstream("text.png") << "no picture";
    std::ofstream("empty.png");
    const HVpageHeader page = page_header();
    for (const auto& [width, height] : {std::pair{0, 0}, {0, 16}, {1, 1}, {2000, 1}, {64, 32}}) {
        add_area(0, ePicturesArea, {65535, 65535, width, height});
        EXPECT_EQ(program_fontPath_picturesAreaAddTxt(0, "text", "text.ttf", &page), 0);
        for (const char* path : {"text.png", "empty.png", "/", "missing.png"})
            program_pictureAreaAddPic(0, 1, &page, path);
        program_pictureAreaAddPic(0, 2, &page, picture("wide.png", 20000, 1, 0xFF0000).c_str());
        EXPECT_EQ(parsed_g5().areas.size(), 1U) << width << " x " << height;
    }
}

TEST_F(Program, LeavesNothingBehindInAThousandCycles) {
    use(kSix);
    const std::string path = picture("a.png", 64, 32, 0xFF0000);
    const auto cycle = [&] {
        add_area(0, ePicturesArea, {0, 0, 64, 32});
        program_picturesAreaAddTxt_G6(0, "cycle", kFont, &kPage6);
        program_pictureAreaAddPic_G6(0, 1, &kPage6, path.c_str());
        integrate_g6();
        program_deleteProgram_G6();
    };
    for (int i = 0; i < 20; ++i) cycle();
    const std::size_t before = mallinfo2().uordblks;
    for (int i = 0; i < 1000; ++i) cycle();
    EXPECT_LT(mallinfo2().uordblks, before + 64 * 1024);
}

} // namespace
} // namespace qm::test
