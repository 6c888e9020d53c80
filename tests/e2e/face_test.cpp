// What the C++ face adds to the calls that it makes: values that do not fit are refused, and owners take
// turns.
#include "drawing.h"
#include "qm_sdk_dual.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <thread>

namespace qm {
namespace {

using testing::HasSubstr;

TEST(Face, RefusesWhatNoFieldHolds) {
    const Controller nobody("127.0.0.1", 1); // reaching for it would be another reason
    const char* const large = "An argument is too large for its field.";
    EXPECT_EQ(nobody.call(cmd_setDispMode, 300).error().reason, large);
    EXPECT_EQ(nobody.call(cmd_setSpeedAdjust, -32769).error().reason, large);
    EXPECT_EQ(nobody.call(cmd_setDispMode, -1).error().reason, large);
    EXPECT_EQ(nobody.switch_screen(std::vector<OnPeriod>(256)).error().reason, large);
    for (const unsigned generation : {5U, 6U})
        EXPECT_EQ(nobody.remove_areas(std::vector<std::uint8_t>(255), generation).error().reason, large);
    EXPECT_THAT(nobody.remove_files({"P001", "P1"}).error().reason, HasSubstr("\"P1\" is no name"));
    EXPECT_THAT(nobody.write({"P001.bin"}).error().reason, HasSubstr("is no name of 4 characters"));
    EXPECT_THAT(nobody.upload({{"P001"}, {"P1"}}).error().reason, HasSubstr("\"P1\" is no name"));
    EXPECT_EQ(nobody.speak({"Hello"}, 256).error().reason, large);
    EXPECT_EQ(nobody.replace_voices(std::vector<VoiceEntry>(256)).error().reason, large);
    Screen wide;
    wide.size = {65536, 16};
    EXPECT_EQ(nobody.show({{}}, wide).error().reason, "A screen has at most 65535 x 65535 pixels.");
    Area area;
    area.picture = "logo.png";
    area.speech = Speech{"Hello"};
    const auto shown = nobody.show({area}, Screen(), ProgramNumbers{1});
    EXPECT_EQ(shown.error().reason, "A picture with speech cannot be related to programs.");
}

TEST(Face, ThrowsTheReasonWhenAValueIsAskedForThatIsNot) {
    try {
        (void)Controller("127.0.0.1", 1).ping().value();
        FAIL() << "there is no value";
    } catch (const Exception& refused) {
        EXPECT_EQ(refused.error().status, QM_FAILED);
        EXPECT_STREQ(refused.what(), "Connecting to 127.0.0.1:1 was refused.");
    }
}

// A transfer is announced, its files are written under the eyes of a watch that returns nothing, and it ends.
TEST(Face, AsksAControllerOnlyWhatItHasNotTold) {
    const sim::Simulator simulator;
    const Controller sign("127.0.0.1", simulator.port());
    const auto identity = sign.ping();
    ASSERT_TRUE(identity);
    Area area;
    area.text = "Hello";
    const auto connections_for = [&](const Screen& screen) {
        const std::size_t before = simulator.connections();
        EXPECT_TRUE(sign.show({area}, screen));
        return simulator.connections() - before;
    };
    Screen guessed;
    guessed.size = identity->screen;
    EXPECT_EQ(connections_for(Screen::of(*identity)), 1U);
    EXPECT_EQ(connections_for(guessed), 2U) << "only what the controller told is not asked for";
    EXPECT_EQ(qm_assume_controller_type(0x0262), 0) << "what was assumed ends with the call";
    EXPECT_EQ(connections_for(guessed), 2U);
    EXPECT_EQ(qm_assume_controller_type(0), 0x0262);
}

TEST(Face, TransfersFilesAndListsThem) {
    const sim::Simulator controller;
    const Controller sign("127.0.0.1", controller.port());
    std::string watched, listed;
    sign.upload({{"P001", 0, {1, 2, 3, 4}}, {"P002", 0, {5}}},
                [&](const File& file) { watched += file.name; })
        .value();
    for (const FileEntry& entry : *sign.files()) listed += entry.name;
    EXPECT_EQ(watched, "P001P002");
    EXPECT_EQ(listed, "P001P002");
}

std::vector<std::uint8_t> built(unsigned id, const Screen& screen) {
    Program program(screen);
    program.set_rules(id).value();
    program.add_area(0, ePicturesArea, {0, 0, 32, 16}).value();
    program.add_text(0, "A", {}, {}, {0, 0, 32, 16}).value();
    std::vector<std::uint8_t> bytes;
    for (const File& file : program.files().value())
        bytes.insert(bytes.end(), file.bytes.begin(), file.bytes.end());
    return bytes;
}

// Each for its own screen, whose pixels are packed in another way.
TEST(Face, ProgramsOfThreadsTakeTurns) {
    Screen five, six;
    five.generation = 5;
    five.type = 0x0051;
    const auto of_five = built(5, five), of_six = built(6, six);
    constexpr int kRounds = 200;
    int wrong = 0;
    std::thread other([&] {
        for (int i = 0; i < kRounds; ++i) wrong += built(5, five) != of_five;
    });
    int other_wrong = 0;
    for (int i = 0; i < kRounds; ++i) other_wrong += built(6, six) != of_six;
    other.join();
    EXPECT_EQ(wrong, 0);
    EXPECT_EQ(other_wrong, 0);
}

TEST(Face, RefusesASecondProgramOfAThreadAndKeepsTheFirst) {
    Program first{Screen()};
    first.set_rules(1).value();
    EXPECT_THROW(Program{Screen()}, std::logic_error);
    EXPECT_TRUE(first.add_area(0, ePicturesArea, {0, 0, 32, 16}));
}

TEST(Face, BordersAreAsLargeAsTheirPictures) {
    const std::string pattern = testing::TempDir() + "face_border.png";
    sim::Image picture(4, 2);
    picture.set(1, 1, {255, 0, 0});
    sim::write_png(picture, pattern);
    const auto framed = [&](const Border& border) {
        Program program{Screen()};
        program.set_rules(1).value();
        program.set_border(border).value();
        return program.files().value().back().bytes;
    };
    EXPECT_EQ(framed({pattern}), framed({pattern, {4, 2}}));
    EXPECT_THAT(Program(Screen()).set_border({pattern, {256, 2}}).error().reason, HasSubstr("at most 255"));
}

TEST(Face, RefusesTimesThatNoProgramHas) {
    Program program{Screen()};
    PlayRules periods, years;
    periods.periods.resize(9);
    EXPECT_EQ(program.set_rules(1, periods).error().reason, "A program has at most 8 play periods.");
    years.life_span = {Date{2024, 1, 1}, Date{12024, 1, 1}};
    EXPECT_THAT(program.set_rules(1, years).error().reason, HasSubstr("from one day to another"));
    EXPECT_THAT(program.set_battle_time(0, {{2024, 1, 1}, 24}, 1).error().reason, HasSubstr("no time"));
    EXPECT_THAT(program.set_battle_time(0, {{2024, 1, 1}, 23}, 7).error().reason, HasSubstr("no time"));
}

} // namespace
} // namespace qm
