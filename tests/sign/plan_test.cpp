// What differs between a sign and its controller.
#include "sign/Plan.h"

#include <gtest/gtest.h>
#include <map>

namespace qm::sign {
namespace {

File file_of(const std::string& name, unsigned type, std::uint8_t crc) {
    return {name, static_cast<std::uint8_t>(type), {1, 2, crc, 0, 0, 0}};
}

std::map<std::string, FileState> states_of(const std::vector<PlannedFile>& files) {
    std::map<std::string, FileState> states;
    for (const PlannedFile& file : files) states[file.entry.name] = file.state;
    return states;
}

TEST(PlannedFiles, AreComparedBySizeAndChecksumAndNothingElseIsTouched) {
    const ProgramSource source;
    const std::vector<File> first{file_of("D001", 9, 1), file_of("P001", 0, 2)};
    const std::vector<File> second{file_of("D002", 9, 3), file_of("P002", 0, 4)};
    const std::vector<SignProgram> programs{{&source, nullptr, &first}, {&source, nullptr, &second}};
    const std::vector<FileEntry> held{{"D001", 9, 6, 1}, {"P001", 0, 7, 2}, {"D002", 9, 6, 5},
                                      {"1234", 0, 9, 9}, {"D234", 9, 9, 9}, {"LOGO", 0, 9, 9},
                                      {"0123", 0, 9, 9}, {"P01", 0, 9, 9}};
    std::map<std::string, FileState> expected{{"D001", FileState::unchanged}, {"P001", FileState::changed},
                                              {"D002", FileState::changed},   {"P002", FileState::fresh},
                                              {"1234", FileState::kept},      {"D234", FileState::kept}};
    EXPECT_EQ(states_of(plan_files(programs, held, false)), expected);
    expected["1234"] = expected["D234"] = FileState::deleted;
    const Plan plan{true, plan_files(programs, held, true), {}};
    EXPECT_EQ(states_of(plan.files), expected);
    EXPECT_EQ(plan.deletes(), (std::vector<std::string>{"1234", "D234"}));
    const auto writes = plan.writes();
    ASSERT_EQ(writes.size(), 3U);
    EXPECT_EQ(writes[0].get().name + writes[1].get().name + writes[2].get().name, "P001D002P002")
        << "data before its program";
}

TEST(Settings, DifferWhereTheControllerSaysSoAndAreUnknownWhereItDoesNot) {
    SignDescription sign;
    sign.power.on = true;
    sign.power.timer = std::vector{read_timer_period("07:30-22:00")};
    sign.brightness = Brightness{1, {}};
    sign.clock = ClockWish{};
    const auto state = [&](const ControllerStatus& status) {
        std::map<std::string, SettingState> states;
        for (const Setting& setting : settings_of(sign, status)) states[setting.name] = setting.state;
        return states;
    };
    ControllerStatus status{};
    for (const auto& [name, found] : state(status)) EXPECT_EQ(found, SettingState::differs) << name;
    status.power = status.timer = status.brightness_mode = 1;
    const auto known = state(status);
    EXPECT_EQ(known.at("power"), SettingState::same);
    EXPECT_EQ(known.at("timer"), SettingState::unknown);
    EXPECT_EQ(known.at("brightness"), SettingState::unknown);
}

} // namespace
} // namespace qm::sign
