// A controller with a screen of 128 x 32 red and green LEDs, and qmctl talking to it.
#pragma once

#include "TemporaryFile.h"
#include "child.h"
#include "hex.h"
#include "simulator/Simulator.h"

namespace qm::test {

// A PNG picture of 3 x 2 pixels: red, green, yellow; black, red, green.
constexpr const char* kPicture =
    "89 50 4E 47 0D 0A 1A 0A 00 00 00 0D 49 48 44 52 00 00 00 03 00 00 00 02 08 02 00 00 00 12 16 F1 4D "
    "00 00 00 15 49 44 41 54 78 DA 63 F8 CF C0 C0 F0 9F E1 3F 88 02 31 40 18 00 42 D1 05 FB 5F E3 83 F9 "
    "00 00 00 00 49 45 4E 44 AE 42 60 82";

// Where that picture lies on a screen of red and green LEDs.
inline void expect_picture(const sim::Image& screen, int left, int top) {
    const sim::Rgb black, red{255, 0, 0}, green{0, 255, 0}, yellow{255, 255, 0};
    const sim::Rgb rows[2][3] = {{red, green, yellow}, {black, red, green}};
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) EXPECT_EQ(screen.at(left + x, top + y), rows[y][x]) << x << "," << y;
}

inline std::vector<unsigned> ids_of(const sim::Simulator& controller) {
    std::vector<unsigned> ids;
    for (const sim::ReceivedArea& area : controller.dynamic_areas()) ids.push_back(area.id);
    return ids;
}

class ControllerTest : public testing::Test {
  protected:
    explicit ControllerTest(sim::Options options = {}) : controller(std::move(options)) {}

    Outcome run(const Words& arguments, const std::string& input = "", const char* output = nullptr) {
        return qmctl(Words{"-c", address(controller.port())} + arguments, input, output);
    }
    void done(const Words& arguments, const std::string& input = "") {
        const Outcome outcome = run(arguments, input);
        EXPECT_EQ(outcome.status, 0) << testing::PrintToString(arguments) << outcome.err;
    }
    nlohmann::json json(const Words& arguments) { return qmctl_json(controller.port(), arguments); }

    sim::Simulator controller;
};

} // namespace qm::test
