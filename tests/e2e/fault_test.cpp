// A controller that answers badly, at every step of a text update.
#include "open_descriptors.h"
#include "simulator/Simulator.h"

#include <gmock/gmock.h>

namespace qm::test {
namespace {

using sim::FaultKind;

// The requests of one update, in order.
enum Step : unsigned { handshake, ping, second_handshake, area };

// The status that a fault gives when it spoils every answer from a step on, and the reason.
struct Case {
    FaultKind kind;
    int status[4];
    const char* reason;
};

// The handshake takes the controller's type from any frame of a known version, unchecked, so that a spoilt
// one shows at the next step.
const Case kCases[] = {
    {FaultKind::silence, {-1, -1, -1, -1}, "The controller is connected, but was silent for 3 s\\."},
    {FaultKind::close, {-1, -1, -1, -1}, "The connection was closed after 0 bytes of the answer\\."},
    {FaultKind::reset, {-1, -1, -1, -1}, "The connection was reset after 0 bytes of the answer\\."},
    {FaultKind::split, {-1, -1, -1, -1}, "The answer was cut at [1-9][0-9]* bytes: its end is missing\\."},
    {FaultKind::bad_crc, {-3, -3, -3, -3}, "The CRC of the answer is wrong\\."},
    {FaultKind::bad_header, {-2, -2, -2, -2}, "The header checksum of the answer is wrong\\."},
    {FaultKind::wrong_code,
     {-5, -5, -5, -5},
     "The answer is to another command: group 0x\\w\\w, code 0x\\w\\w\\."},
    {FaultKind::garbage,
     {-1, -1, -1, -1},
     "The answer is not a frame: its 64 bytes begin with 0B 30 55 7A 9F C4 E9 0E\\."},
    {FaultKind::false_length,
     {-3, -3, -3, -3},
     "The answer was cut at [1-9][0-9]* bytes: its lengths announce more\\."},
    {FaultKind::delay, {0, 0, 0, 0}, ""},
    // A whole frame of 4 KB: more than the ping's answer may be, and more than one read of the last step.
    {FaultKind::oversize,
     {1, 1, -1, -1},
     "The answer has 4[0-9]+ bytes, and there is room for 1024\\.|The answer is longer than 1024 bytes\\."},
};

class Faults : public testing::TestWithParam<std::tuple<Case, Step>> {};

TEST_P(Faults, EndAnUpdateWithTheirStatusAndLeaveNothingBehind) {
    const auto& [c, step] = GetParam();
    sim::Simulator sim;
    const auto send = [&] {
        return dynamicArea_AddAreaTxt_6G("127.0.0.1", sim.port(), SCREEN_COLOR_DOUBLE, 0, 0, 0, 128, 32,
                                         "DejaVu Sans", 12, "fault");
    };
    ASSERT_TRUE(sim.wait_idle());
    const std::size_t before = open_descriptors();
    sim.set_fault(sim::Fault{.kind = c.kind, .after = step});
    EXPECT_EQ(send(), c.status[step]);
    EXPECT_THAT(qm_last_error(), testing::MatchesRegex(c.reason));
    sim.set_fault(std::nullopt);
    EXPECT_EQ(send(), 0) << "the next update goes through";
    EXPECT_STREQ(qm_last_error(), "");
    ASSERT_TRUE(sim.wait_idle());
    EXPECT_EQ(open_descriptors(), before);
}

INSTANTIATE_TEST_SUITE_P(Update, Faults,
                         testing::Combine(testing::ValuesIn(kCases),
                                          testing::Values(handshake, ping, second_handshake, area)),
                         [](const auto& test) {
                             std::string name(sim::name_of(std::get<0>(test.param).kind));
                             std::erase(name, '-');
                             return name + "AtStep" + std::to_string(std::get<1>(test.param));
                         });

TEST(Refusal, ReachesTheCallerWithTheControllersErrorValue) {
    sim::Simulator sim;
    for (const unsigned step : {ping, area}) {
        sim.set_fault(sim::Fault{.kind = FaultKind::nack, .after = step});
        EXPECT_EQ(dynamicArea_AddAreaTxt_6G("127.0.0.1", sim.port(), SCREEN_COLOR_DOUBLE, 0, 0, 0, 128, 32,
                                            "DejaVu Sans", 12, "no"),
                  static_cast<int>(sim::ErrorValue::refused_by_fault));
        EXPECT_STREQ(qm_last_error(), "The controller refused with error 199.");
        EXPECT_TRUE(sim.dynamic_areas().empty());
    }
}

} // namespace
} // namespace qm::test
