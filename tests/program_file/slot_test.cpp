// The one program under construction, and many threads.
#include "fixture.h"

#include <atomic>
#include <thread>

namespace qm::test {
namespace {

TEST_F(Program, IsBuiltByOneThreadAtATime) {
    std::atomic<int> inside = 0, overlaps = 0, wrong = 0;
    std::vector<std::thread> builders;
    for (Ouint32 id = 1; id <= 6; ++id)
        builders.emplace_back([&, id] {
            for (int i = 0; i < 10; ++i) {
                const HVprogramHeader header = program_header(id);
                const HVareaHeader area = area_header(ePicturesArea, 0, 0, 32, 16);
                const HVpageHeader page = page_header();
                program_addProgram(&header);
                overlaps += ++inside > 1;
                program_AddArea(0, &area);
                program_picturesAreaAddTxt(0, "x", kFont, &page);
                const File file = integrate_g5();
                wrong += file.name != "P00" + std::to_string(id) || parse_g5(file.bytes).areaCount != 1;
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
