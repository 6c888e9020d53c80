// What a program refuses, and what it survives.
#include "fixture.h"
#include "hex.h"
#include "outcome.h"

#include <fstream>
#include <malloc.h>

namespace qm::test {
namespace {

TEST_F(Program, RefusesUnknownAreasByName) {
    const HVpageHeader page = page_header();
    const HVareaframeHeader border{};
    getPageData preview{};
    const HVtimeAreaData_G56 content = time_content();
    const HVAnalogClockHeader_G56 clock{};
    const ClockColor_G56 colors{};
    const Ouint8 byte = 0;
    const struct {
        const char* name;
        std::function<int()> call;
    } cases[] = {
        {"program_picturesAreaAddTxt", [&] { return program_picturesAreaAddTxt(9, "x", kFont, &page); }},
        {"program_fontPath_picturesAreaAddTxt",
         [&] { return program_fontPath_picturesAreaAddTxt(9, "x", "f.ttf", &page); }},
        {"program_picturesAreaChangeTxt", [&] { return program_picturesAreaChangeTxt(9, "x", &page); }},
        {"program_fontPath_picturesAreaChangeTxt",
         [&] { return program_fontPath_picturesAreaChangeTxt(9, "x", &page); }},
        {"program_pictureAreaAddPic", [&] { return program_pictureAreaAddPic(9, 1, &page, "x.png"); }},
        {"program_picturesAreaAddFrame", [&] { return program_picturesAreaAddFrame(9, &border, "x.png"); }},
        {"program_pictureAreaRemoveFrame", [&] { return program_pictureAreaRemoveFrame(9); }},
        {"program_pictureAreaGetOnePage", [&] { return program_pictureAreaGetOnePage(9, 0, &preview); }},
        {"program_timeAreaAddContent", [&] { return program_timeAreaAddContent(9, &content); }},
        {"program_fontPath_timeAreaAddContent",
         [&] { return program_fontPath_timeAreaAddContent(9, &content); }},
        {"program_timeAreaChangeContent", [&] { return program_timeAreaChangeContent(9, &content); }},
        {"program_timeAreaAddAnalogClock",
         [&] { return program_timeAreaAddAnalogClock(9, &clock, eLINE, &colors); }},
        {"program_timeAreaChangeAnalogClock",
         [&] { return program_timeAreaChangeAnalogClock(9, &clock, eLINE, &colors); }},
        {"program_timeAreaChangeDialPic", [&] { return program_timeAreaChangeDialPic(9, "x.png"); }},
        {"program_timeAreaChangeDialPicAdd_G56",
         [&] { return program_timeAreaChangeDialPicAdd_G56(9, &byte, 1); }},
        {"program_timeAreaRemoveDialPic", [&] { return program_timeAreaRemoveDialPic(9); }},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(printed_by([&] { EXPECT_EQ(c.call(), -1); }),
                  "Error:" + std::string(c.name) + "==>Can not find the area.please check areaID.\n");
        EXPECT_STREQ(qm_last_error(), "The program has no area 9.");
    }
}

TEST_F(Program, RefusesUnknownAreasOfGeneration6ByName) {
    const HVpageHeader_G6 page = page_header_g6();
    const HVPicAreaSoundHeader_G6 sound{};
    const HVtimeAreaData_G56 content = time_content();
    const HVTimeAreaBattle_G6 battle{};
    const HVAnalogClockHeader_G56 clock{};
    const ClockColor_G56 colors{};
    const struct {
        const char* name;
        std::function<int()> call;
    } cases[] = {
        {"program_picturesAreaAddTxt_G6",
         [&] { return program_picturesAreaAddTxt_G6(9, "x", kFont, &page); }},
        {"program_fontPath_picturesAreaAddTxt_G6",
         [&] { return program_fontPath_picturesAreaAddTxt_G6(9, "x", "f.ttf", &page); }},
        {"program_picturesAreaChangeTxt_G6", [&] { return program_picturesAreaChangeTxt_G6(9, "x", &page); }},
        {"program_fontPath_picturesAreaChangeTxt_G6",
         [&] { return program_fontPath_picturesAreaChangeTxt_G6(9, "x", &page); }},
        {"program_pictureAreaAddPic_G6", [&] { return program_pictureAreaAddPic_G6(9, 1, &page, "x.png"); }},
        {"program_pictureAreaChangePic_G6",
         [&] { return program_pictureAreaChangePic_G6(9, 1, &page, "x.png"); }},
        {"program_pictureAreaEnableSound_G6",
         [&] { return program_pictureAreaEnableSound_G6(9, sound, "x"); }},
        {"program_pictureAreaChangeSoundSettings_G6",
         [&] { return program_pictureAreaChangeSoundSettings_G6(9, sound, "x"); }},
        {"program_pictureAreaDisableSound_G6", [&] { return program_pictureAreaDisableSound_G6(9); }},
        {"program_timeAreaAddContent_G6", [&] { return program_timeAreaAddContent_G6(9, &content); }},
        {"program_fontPath_timeAreaAddContent_G6",
         [&] { return program_fontPath_timeAreaAddContent_G6(9, &content); }},
        {"program_timeAreaChangeContent_G6", [&] { return program_timeAreaChangeContent_G6(9, &content); }},
        {"program_timeAreaSetBattleTime_G6", [&] { return program_timeAreaSetBattleTime_G6(9, &battle); }},
        {"program_timeAreaCancleBattleTime_G6", [&] { return program_timeAreaCancleBattleTime_G6(9); }},
        {"program_timeAreaAddAnalogClock_G6",
         [&] { return program_timeAreaAddAnalogClock_G6(9, &clock, eLINE, &colors); }},
        {"program_timeAreaChangeAnalogClock_G6",
         [&] { return program_timeAreaChangeAnalogClock_G6(9, &clock, eLINE, &colors); }},
        {"program_timeAreaChangeDialPic_G6", [&] { return program_timeAreaChangeDialPic_G6(9, "x.png"); }},
        {"program_timeAreaRemoveDialPic_G6", [&] { return program_timeAreaRemoveDialPic_G6(9); }},
        {"program_backGroundColor_G6", [&] { return program_backGroundColor_G6(9, &page, eRed); }},
        {"program_backGroundPic_G6", [&] { return program_backGroundPic_G6(9, 1, &page, "x.png"); }},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(printed_by([&] { EXPECT_EQ(c.call(), -1); }),
                  "Error:" + std::string(c.name) + "==>Can not find the area.please check areaID.\n");
        EXPECT_STREQ(qm_last_error(), "The program has no area 9.");
    }
}

TEST_F(Program, SaysWhatAnAreaOfThatKindDoesNotTake) {
    enum : Ouint16 { pictures, clock, background };
    for (const auto& [id, type] : {std::pair<Ouint16, Ouint8>{pictures, ePicturesArea},
                                   {clock, eTimeClockArea},
                                   {background, eGlobalBackGroundArea}}) {
        const HVareaHeader_G6 area = area_header_g6(type, 0, 0, 16, 8);
        ASSERT_EQ(program_addArea_G6(id, &area), 0);
    }
    const HVpageHeader_G6 page = page_header_g6();
    const HVareaframeHeader border{};
    const HVtimeAreaData_G56 content = time_content();
    const Ouint8 byte = 0;
    const struct {
        const char* message;
        std::function<int()> call;
    } cases[] = {
        {"program_picturesAreaAddTxt_G6==>The area takes no text.",
         [&] { return program_picturesAreaAddTxt_G6(background, "x", kFont, &page); }},
        {"program_fontPath_picturesAreaAddTxt_G6==>The area takes no text.",
         [&] { return program_fontPath_picturesAreaAddTxt_G6(clock, "x", kFont, &page); }},
        {"program_picturesAreaChangeTxt_G6==>The area takes no text.",
         [&] { return program_picturesAreaChangeTxt_G6(clock, "x", &page); }},
        {"program_pictureAreaAddPic_G6==>The area takes no picture.",
         [&] { return program_pictureAreaAddPic_G6(clock, 1, &page, "x.png"); }},
        {"program_pictureAreaDisableSound_G6==>The area takes no speech.",
         [&] { return program_pictureAreaDisableSound_G6(clock); }},
        {"program_picturesAreaAddFrame==>The area takes no border.",
         [&] { return program_picturesAreaAddFrame(clock, &border, "x.png"); }},
        {"program_timeAreaAddContent_G6==>The area takes no clock.",
         [&] { return program_timeAreaAddContent_G6(pictures, &content); }},
        {"program_timeAreaChangeDialPicAdd_G56==>The area takes no clock.",
         [&] { return program_timeAreaChangeDialPicAdd_G56(background, &byte, 1); }},
        {"program_backGroundColor_G6==>The area takes no background.",
         [&] { return program_backGroundColor_G6(pictures, &page, eRed); }},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(printed_by([&] { EXPECT_EQ(c.call(), -1); }), "Error:" + std::string(c.message) + "\n");
        const std::string taken = std::string(c.message).substr(std::string(c.message).find(" takes no"));
        EXPECT_THAT(qm_last_error(), testing::AllOf(testing::StartsWith("Area "), testing::EndsWith(taken)));
    }
}

// They are for both generations: which one the program is of is still open.
TEST_F(Program, IsNotMadeByCallsForBothGenerations) {
    const HVareaframeHeader border{};
    getPageData preview{};
    const Ouint8 byte = 0;
    const std::function<int()> calls[] = {
        [&] { return program_timeAreaChangeDialPicAdd_G56(0, &byte, 1); },
        [&] { return program_picturesAreaAddFrame(0, &border, "x.png"); },
        [&] { return program_pictureAreaRemoveFrame(0); },
        [&] { return program_pictureAreaGetOnePage(0, 0, &preview); },
    };
    const HVprogramHeader_G6 header = program_header_g6(1);
    for (const auto& call : calls) {
        EXPECT_NE(printed_by([&] { EXPECT_EQ(call(), -1); }).find("Can not find the area"),
                  std::string::npos);
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
    EXPECT_EQ(parsed_g5().areaCount, 0);
    program_deleteProgram();
    EXPECT_TRUE(refuses_an_argument(program_addArea_G6(0, &unknown6)));
    EXPECT_EQ(parsed_g6().areaCount, 0);
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
    const HVareaHeader area = area_header(ePicturesArea, 0, 0, 20, 10);
    const HVpageHeader page = page_header();
    program_AddArea(0, &area);
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
        EXPECT_TRUE(preview.fileAddre == nullptr);
        EXPECT_EQ(int{preview.allPageNub}, 3);
    }
}

TEST_F(Program, SurvivesBadPicturesAndFonts) {
    std::ofstream("text.png") << "no picture";
    std::ofstream("empty.png");
    const HVpageHeader page = page_header();
    for (const auto& [width, height] : {std::pair{0, 0}, {0, 16}, {1, 1}, {2000, 1}, {64, 32}}) {
        const HVareaHeader area = area_header(ePicturesArea, 65535, 65535, static_cast<Ouint16>(width),
                                              static_cast<Ouint16>(height));
        program_AddArea(0, &area);
        EXPECT_EQ(program_fontPath_picturesAreaAddTxt(0, "text", "text.ttf", &page), 0);
        for (const char* path : {"text.png", "empty.png", "/", "missing.png"})
            program_pictureAreaAddPic(0, 1, &page, path);
        program_pictureAreaAddPic(0, 2, &page, picture("wide.png", 20000, 1, 0xFF0000).c_str());
        EXPECT_NO_THROW(parsed_g5()) << width << " x " << height;
    }
}

TEST_F(Program, LeavesNothingBehindInAThousandCycles) {
    const HVareaHeader_G6 area = area_header_g6(ePicturesArea, 0, 0, 64, 32);
    const HVpageHeader_G6 page = page_header_g6();
    const std::string path = picture("a.png", 64, 32, 0xFF0000);
    const auto cycle = [&] {
        program_addArea_G6(0, &area);
        program_picturesAreaAddTxt_G6(0, "cycle", kFont, &page);
        program_pictureAreaAddPic_G6(0, 1, &page, path.c_str());
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
