// Input that would cost the host its memory, its threads or its life, and many threads at once.
#include "fixture.h"

#include <atomic>
#include <fstream>
#include <sys/stat.h>
#include <thread>

namespace qm::test {
namespace {

TEST_F(Program, GivesABackgroundNoText) {
    begin(kSix);
    const HVpageHeader_G6 page = page_header_g6(38, SINGLELINE);
    add_area(0, eGlobalBackGroundArea, {0, 0, 16, 16});
    EXPECT_EQ(program_picturesAreaAddTxt_G6(0, "AAAAAAAAAAAAAAAA", kFont, &page), -1);
    program_backGroundColor_G6(0, &page, eRed);
    EXPECT_EQ(parsed_g6().areas.at(0).pages.size(), 1U);
    getPageData preview{};
    EXPECT_EQ(program_pictureAreaGetOnePage(0, 0, &preview), 0);
    EXPECT_EQ(int{preview.allPageNub}, 1);
}

TEST_F(Program, TakesAnyByteForAFlag) {
    HVpageHeader page = page_header();
    const auto pixels = [&](Ouint8 flag) {
        std::memcpy(&page.fontBold, &flag, 1);
        add_area(0, ePicturesArea, {0, 0, 64, 16});
        EXPECT_EQ(program_fontPath_picturesAreaAddTxt(0, "flag", kFontFile, &page), 0);
        return parsed_g5().areas.at(0).pages.at(0).pixels;
    };
    EXPECT_EQ(pixels(0xFF), pixels(1));
    EXPECT_NE(pixels(0xFF), pixels(0));
}

TEST_F(Program, RefusesTextsOfMorePagesThanAFileCounts) {
    const std::string text(20000, 'W'), spaces(40000, ' ');
    add_area(0, ePicturesArea, {0, 0, 1, 1});
    for (const auto& [mode, arrMode, points] :
         {std::tuple{4, SINGLELINE, 3072}, {1, MULTILINE, 3072}, {4, SINGLELINE, 9}}) {
        HVpageHeader page = page_header(static_cast<Ouint8>(mode), arrMode);
        page.txtSpace = 65535;
        page.fontSize = static_cast<Ouint16>(points);
        const int status = program_picturesAreaAddTxt(0, text.c_str(), kFont, &page);
        EXPECT_EQ(status, mode == 4 ? -1 : 0);
        EXPECT_EQ(program_picturesAreaAddTxt(0, spaces.c_str(), kFont, &page), mode == 4 ? -1 : 0);
    }
    const HVpageHeader page = page_header();
    EXPECT_EQ(program_picturesAreaAddTxt(0, "x", kFont, &page), 0) << "the area is as good as before";
}

TEST_F(Program, IsAsItWasAfterARefusedChange) {
    const HVpageHeader page = page_header(4, SINGLELINE);
    const std::string text(40000, 'W');
    add_area(0, ePicturesArea, {0, 0, 64, 16});
    ASSERT_EQ(program_picturesAreaAddTxt(0, text.c_str(), kFont, &page), 0);
    const File before = integrate_g5();
    EXPECT_EQ(program_MoveArea(0, 3, 4, 1, 16), -1);
    EXPECT_EQ(integrate_g5().bytes, before.bytes);
    const std::string longer = text + text + text + text;
    HVpageHeader wide = page;
    wide.txtSpace = 65535;
    EXPECT_EQ(program_picturesAreaChangeTxt(0, longer.c_str(), &wide), -1);
    EXPECT_EQ(integrate_g5().bytes, before.bytes);
}

TEST_F(Program, CountsNoMorePicturesThanItsFieldHolds) {
    const HVpageHeader page = page_header();
    add_area(0, ePicturesArea, {0, 0, 8, 8});
    for (int i = 0; i < 65535; ++i) ASSERT_EQ(program_pictureAreaAddPic(0, 0, &page, "none.png"), 0);
    EXPECT_EQ(program_pictureAreaAddPic(0, 0, &page, "none.png"), -1);
    EXPECT_EQ(program_picturesAreaAddTxt(0, "x", kFont, &page), -1);
}

TEST_F(Program, OpensOrdinaryFilesOnly) {
    ASSERT_EQ(mkfifo("pipe.png", 0600), 0);
    ASSERT_EQ(mkfifo("pipe.ttf", 0600), 0);
    ASSERT_EQ(mkfifo("dataFantx.bin", 0600), 0);
    const HVpageHeader page = page_header();
    add_area(0, ePicturesArea, {0, 0, 16, 16});
    program_pictureAreaAddPic(0, 1, &page, "pipe.png");
    EXPECT_EQ(program_fontPath_picturesAreaAddTxt(0, "x", "pipe.ttf", &page), 0);
    EXPECT_EQ(parsed_g5().areas.at(0).pages.size(), 1U) << "the text, in another font";
}

TEST_F(Program, DoesNotUnpackPicturesBeyondMeasure) {
    // The head of a PNG file of 60,000 x 60,000 pixels.
    const char head[] = "\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\xEA\x60\0\0\xEA\x60\x08\x06\0\0\0";
    std::ofstream("bomb.png", std::ios::binary).write(head, sizeof head - 1);
    const HVscreenframeHeader_G6 border{};
    EXPECT_EQ(program_addFrame_G6(&border, "bomb.png"), -1);
    EXPECT_STREQ(qm_last_error(), "Picture bomb.png: it has more than 64 million pixels.");
}

TEST_F(Program, ShowsTextInAFamilyWhoseNameIsNoUtf8) {
    const HVpageHeader page = page_header();
    add_area(0, ePicturesArea, {0, 0, 64, 16});
    EXPECT_EQ(program_picturesAreaAddTxt(0, "x", "\xCB\xCE\xCC\xE5", &page), 0);
    EXPECT_EQ(parsed_g5().areas.at(0).pages.size(), 1U);
}

TEST_F(Program, LeavesTheSlotFreeWhenItRefusesAName) {
    const HVprogramHeader header = program_header(12345);
    EXPECT_EQ(program_addProgram(&header), -1);
    const HVprogramHeader_G6 other = program_header_g6(1);
    EXPECT_EQ(program_addProgram_G6(&other), 0) << "the slot holds no program of generation 5";
}

TEST_F(Program, IsBuiltByOneThreadAtATime) {
    std::atomic<int> inside = 0, overlaps = 0, wrong = 0;
    std::vector<std::thread> builders;
    for (Ouint32 id = 1; id <= 6; ++id)
        builders.emplace_back([&, id] {
            for (int i = 0; i < 10; ++i) {
                const HVprogramHeader header = program_header(id);
                const HVpageHeader page = page_header();
                program_addProgram(&header);
                overlaps += ++inside > 1;
                add_area(0, ePicturesArea, {0, 0, 32, 16});
                program_picturesAreaAddTxt(0, "x", kFont, &page);
                const File file = integrate_g5();
                wrong += file.name != "P00" + std::to_string(id) ||
                         accepted(parse_program(file.bytes, format())).area_count != 1;
                --inside;
                program_deleteProgram();
            }
        });
    for (std::thread& builder : builders) builder.join();
    EXPECT_EQ(overlaps, 0);
    EXPECT_EQ(wrong, 0);
}

TEST_F(Program, CanBeDeletedByAnotherThread) {
    const HVprogramHeader header = program_header(1);
    std::thread([&] { program_addProgram(&header); }).join();
    EXPECT_EQ(program_deleteProgram(), 0) << "its owner has ended without deleting it";
    EXPECT_EQ(program_addProgram(&header), 0);
    EXPECT_EQ(program_deleteProgram(), 0);
    EXPECT_EQ(program_deleteProgram(), 0) << "also without a program";
}

TEST_F(Program, DoesNotWriteItsCopyThroughASymbolicLink) {
    std::filesystem::create_symlink("elsewhere", "dataFantx.bin");
    integrate_g5();
    EXPECT_FALSE(std::filesystem::exists("elsewhere"));
}

} // namespace
} // namespace qm::test
