// A controller that answers badly, at every step of a text update.
#include "open_descriptors.h"
#include "simulator/Simulator.h"

#include <gtest/gtest.h>

namespace qm::test {
namespace {

using sim::FaultKind;

// The requests of one update, in order.
enum Step : unsigned { handshake, ping, second_handshake, area };

// The status that a fault gives when it spoils every answer from a step on.
struct Case {
    FaultKind kind;
    int status[4];
};

// The handshake takes the controller's type from any frame of a known version, unchecked, so that a spoilt
// one shows at the next step.
const Case kCases[] = {
    {FaultKind::silence, {-1, -1, -1, -1}},
    {FaultKind::close, {-1, -1, -1, -1}},
    {FaultKind::reset, {-1, -1, -1, -1}},
    {FaultKind::split, {-1, -1, -1, -1}},
    {FaultKind::bad_crc, {-3, -3, -3, -3}},
    {FaultKind::bad_header, {-2, -2, -2, -2}},
    {FaultKind::wrong_code, {-5, -5, -5, -5}},
    {FaultKind::garbage, {-1, -1, -1, -1}},
    {FaultKind::false_length, {-3, -3, -3, -3}},
    {FaultKind::delay, {0, 0, 0, 0}},
    // A whole frame of 4 KB: more than the ping's answer may be, and more than one read of the last step.
    {FaultKind::oversize, {1, 1, -1, -1}},
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
    sim.set_fault(std::nullopt);
    EXPECT_EQ(send(), 0) << "the next update goes through";
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
        EXPECT_TRUE(sim.dynamic_areas().empty());
    }
}

} // namespace
} // namespace qm::test
