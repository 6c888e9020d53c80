// Analog clocks, battle time, and clocks on a controller that runs.
#include "clock_fixture.h"
#include "global.h"
#include "host.h"

#include <atomic>
#include <cmath>
#include <numbers>
#include <set>

namespace qm::sim {
namespace {

using namespace std::chrono;
using namespace std::chrono_literals;
namespace lib = qm::test;
using test::Host;
using test::kFive;
using test::kSix;
using test::ScreenKind;

const LocalSeconds kDay = local_days(2024y / February / 29);
const ClockColor_G56 kDial{eGreen, eRed, eBlack};
constexpr Rgb kRed{255, 0, 0}, kGreen{0, 255, 0}, kBlack{};

// Hands of red, green and yellow around (cx, cy), of widths 1 and lengths 10, 16 and 20.
HVAnalogClockHeader_G56 hands(Ouint16 cx, Ouint16 cy) {
    return {cx, cy, 0, 1, 10, eRed, 1, 16, eGreen, 1, 20, eYellow};
}

using Analog = test::ClockProgram;

// The farthest pixel of a colour lies where the hand ends.
void expect_hand(const Image& screen, int cx, int cy, Rgb color, int length, double turn,
                 const char* moment) {
    double farthest = 0;
    int tip_x = 0, tip_y = 0;
    for (int y = 0; y < screen.height; ++y)
        for (int x = 0; x < screen.width; ++x)
            if (const double away = std::hypot(x - cx, y - cy); screen.at(x, y) == color && away > farthest) {
                farthest = away;
                tip_x = x - cx;
                tip_y = y - cy;
            }
    EXPECT_NEAR(tip_x, (length - 1) * std::sin(turn * 2 * std::numbers::pi), 1.0) << moment;
    EXPECT_NEAR(tip_y, -(length - 1) * std::cos(turn * 2 * std::numbers::pi), 1.0) << moment;
}

TEST_F(Analog, HandsPointWhereTheyMust) {
    for (const ScreenKind& screen : {kFive, kSix}) {
        begin(screen, {10, 4, 64, 48});
        ASSERT_EQ(add(hands(30, 24), eLINE, {eBlack, eBlack, eBlack}), 0);
        const auto player = played(96, 64);
        for (int hour = 0; hour < 24; hour += 2) {
            const int minute = (hour * 5 + 17) % 60, second = (hour * 7 + 41) % 60;
            const Image shown =
                player.screen({Milliseconds{0}, kDay + hours(hour) + minutes(minute) + seconds(second)});
            const std::string moment = std::to_string(hour) + ":" + std::to_string(minute);
            const double minutes_turn = (minute + second / 60.0) / 60;
            expect_hand(shown, 40, 28, kRed, 10, (hour % 12 + minutes_turn) / 12, moment.c_str());
            expect_hand(shown, 40, 28, kGreen, 16, minutes_turn, moment.c_str());
            expect_hand(shown, 40, 28, {255, 255, 0}, 20, second / 60.0, moment.c_str());
        }
    }
}

TEST_F(Analog, HandsAreAsWideAsTheyAreLong) {
    for (int width = 1; width <= 5; ++width) {
        HVAnalogClockHeader_G56 clock{16, 16, 0,      static_cast<Ouint8>(width), 9, eRed, 0, 9, eGreen,
                                      9,  0,  eYellow};
        begin(kSix, {0, 0, 33, 33});
        ASSERT_EQ(add(clock, eLINE, {eBlack, eBlack, eBlack}), 0);
        const auto player = played(33, 33);
        for (const int hour : {0, 3, 6, 9}) {
            const Image shown = player.screen({Milliseconds{0}, kDay + hours(hour)});
            int lit = 0;
            for (int y = 0; y < 33; ++y)
                for (int x = 0; x < 33; ++x) {
                    lit += shown.at(x, y) == kRed;
                    EXPECT_TRUE(shown.at(x, y) == kRed || shown.at(x, y) == kBlack);
                }
            EXPECT_EQ(lit, width * 9) << hour << " o'clock; hands without width or length are not there";
        }
    }
}

TEST_F(Analog, HandsHaveTheirColoursAndStayInTheArea) {
    const struct {
        ScreenKind screen;
        Ouint32 color;
        Rgb shown;
    } cases[] = {
        {kFive, 0x00FF0002, kGreen},
        {{"", true, lib::kMode4, ScreenColor::three}, eCyan, {0, 255, 255}},
        {{"", false, lib::kMode5, ScreenColor::full}, eMagenta, {255, 0, 255}},
        {{"", true, lib::kMode3, ScreenColor::full}, eRed, kRed},
        {{"", true, lib::kMode5, ScreenColor::full}, 0x123456, {0x12, 0x34, 0x56}},
    };
    for (const auto& c : cases) {
        HVAnalogClockHeader_G56 clock = hands(8, 8);
        clock.HourHandColor = clock.MinHandColor = clock.SecHandColor = c.color;
        clock.SecHandLen = 255;
        begin(c.screen, {16, 8, 17, 17});
        ASSERT_EQ(add(clock, eLINE, {eBlack, eBlack, eBlack}), 0);
        const Image shown = played(64, 32).screen({Milliseconds{0}, kDay + 15s});
        EXPECT_EQ(shown.at(32, 16), c.shown) << "the second hand reaches the area's edge";
        EXPECT_EQ(shown.at(33, 16), kBlack) << "and ends there";
    }
}

// The page alone, on a screen of its size.
class Dial : public Analog {
  protected:
    static Image dial(int side, int pivot, E_ClockStyle style) {
        HVAnalogClockHeader_G56 clock{};
        clock.OrignPointX = clock.OrignPointY = static_cast<Ouint16>(pivot);
        begin(kSix, {0, 0, side, side});
        EXPECT_EQ(add(clock, style, kDial), 0);
        return played(side, side).screen({Milliseconds{0}, kDay});
    }
};

TEST_F(Dial, HasTwelveMarksLikeItsMirrorImage) {
    for (const E_ClockStyle style : {eLINE, eSQUARE, eCIRCLE})
        for (const int side : {16, 17, 24, 32, 48, 64, 128, 256}) {
            const int pivot = side / 2;
            const Image shown = dial(side, pivot, style);
            std::array<int, 12> lit{};
            for (int y = 0; y < side; ++y)
                for (int x = 0; x < side; ++x) {
                    if (shown.at(x, y) == kBlack) continue;
                    const double turn = std::atan2(x - pivot, pivot - y) / (2 * std::numbers::pi);
                    const auto hour = static_cast<std::size_t>(std::lround(turn * 12 + 12) % 12);
                    ++lit[hour];
                    EXPECT_EQ(shown.at(x, y), hour % 3 == 0 ? kGreen : kRed) << x << ", " << y;
                    EXPECT_NE(shown.at(2 * pivot - x, y), kBlack);
                    EXPECT_NE(shown.at(x, 2 * pivot - y), kBlack);
                    EXPECT_GT(std::hypot(x - pivot, y - pivot), 0.6 * (pivot - 1)) << "room for the hands";
                }
            for (std::size_t hour = 0; hour < 12; ++hour) {
                EXPECT_GT(lit[hour], 0) << hour << " of " << side;
                EXPECT_EQ(lit[hour], lit[(12 - hour) % 12]);
                EXPECT_LE(lit[hour], lit[0]) << "main marks are the largest";
            }
        }
}

// A stroke that is no wider than a pixel; from 81 pixels on main marks are wider.
TEST_F(Dial, HasStraightStrokesThatPointToThePivot) {
    for (int side = 8; side < 81; ++side) {
        const int pivot = side / 2;
        const Image shown = dial(side, pivot, eLINE);
        std::array<std::set<std::pair<int, int>>, 12> strokes;
        for (int y = 0; y < side; ++y)
            for (int x = 0; x < side; ++x) {
                if (shown.at(x, y) == kBlack) continue;
                const double turn = std::atan2(x - pivot, pivot - y) / (2 * std::numbers::pi);
                const auto hour = static_cast<std::size_t>(std::lround(turn * 12 + 12) % 12);
                const double angle = static_cast<double>(hour) * std::numbers::pi / 6;
                EXPECT_LE(std::abs((x - pivot) * std::cos(angle) + (y - pivot) * std::sin(angle)), 0.5)
                    << x << ", " << y << " of " << side;
                strokes[hour].emplace(x, y);
            }
        for (const auto& stroke : strokes) {
            EXPECT_GE(stroke.size(), side < 24 ? 1U : 2U) << side;
            for (const auto& [x, y] : stroke)
                EXPECT_TRUE(stroke.size() == 1 ||
                            std::ranges::any_of(stroke,
                                                [&, x = x, y = y](const auto& at) {
                                                    return std::max(std::abs(at.first - x),
                                                                    std::abs(at.second - y)) == 1;
                                                }))
                    << "in one piece, of " << side;
        }
    }
}

TEST_F(Dial, DrawsItsMarksInStyle) {
    const struct {
        E_ClockStyle style;
        std::vector<std::string> rows;
    } cases[] = {
        {eLINE, {"...#...", "...#...", "...#...", "...#...", "...#...", "...#...", "......."}},
        {eSQUARE, {".#####.", ".#####.", ".#####.", ".#####.", ".#####.", ".......", "......."}},
        {eCIRCLE, {"..###..", ".#####.", ".#####.", ".#####.", "..###..", ".......", "......."}},
    };
    for (const auto& c : cases) {
        const Image shown = dial(63, 31, c.style);
        for (int y = 0; y < 7; ++y) {
            std::string row;
            for (int x = 28; x < 35; ++x) row += shown.at(x, y) == kBlack ? '.' : '#';
            EXPECT_EQ(row, c.rows[static_cast<std::size_t>(y)]) << "row " << y << " at 12 o'clock";
        }
    }
}

TEST_F(Dial, StaysInsideAnAreaWhereverThePivotIs) {
    for (const int pivot : {0, 1, 3, 12, 15, 40}) {
        const Image shown = dial(16, pivot, eSQUARE);
        EXPECT_EQ(shown.width, 16) << "drawn, and read back";
    }
}

class Battle : public Analog {
  protected:
    // Battle time on an area that shows a date, the day of the week and the time as digits.
    static Playlist battle(const HVTimeAreaBattle_G6* start, bool cancelled = false) {
        HVtimeAreaData_G56 content = lib::time_content();
        content.time_enable = content.week_enable = true;
        content.weekstyle = Mon;
        begin(kSix, {0, 0, 256, 16});
        EXPECT_EQ(add(content), 0);
        if (start) {
            EXPECT_EQ(program_timeAreaSetBattleTime_G6(test::kClockArea, start), 0);
        }
        if (cancelled) {
            EXPECT_EQ(program_timeAreaCancleBattleTime_G6(test::kClockArea), 0);
        }
        return played(256, 16);
    }
};

TEST_F(Battle, CountsFromItsStart) {
    const HVTimeAreaBattle_G6 start{0x2024, 0x02, 0x28, 0x23, 0x59, 0x30, 3, 0};
    const auto own = battle(nullptr), fought = battle(&start), cancelled = battle(&start, true);
    const LocalSeconds began = local_days(2024y / February / 28) + 23h + 59min + 30s;
    for (const Milliseconds passed : {0ms, 999ms, 1000ms, 29'999ms, 30'000ms, 86'430'000ms}) {
        EXPECT_EQ(fought.screen({passed, kDay}),
                  own.screen({Milliseconds{0}, began + floor<seconds>(passed)}));
        EXPECT_EQ(cancelled.screen({passed, kDay}), own.screen({Milliseconds{0}, kDay}));
    }
    EXPECT_NE(fought.screen({29'999ms, kDay}), fought.screen({30s, kDay}));
}

TEST_F(Battle, StartsAtZeroOnTheFirstDayAndOnAnyDayOfTheWeek) {
    // 1 January of the year 0 was a Saturday.
    const HVTimeAreaBattle_G6 zero{0, 0, 0, 0, 0, 0, 6, 0}, tuesday{0, 0, 0, 0, 0, 0, 2, 0};
    const auto own = battle(nullptr), fought = battle(&zero), other = battle(&tuesday);
    const LocalSeconds first = local_days(0y / January / 1);
    for (const Milliseconds passed : {0h, 25h, 24h * 40}) {
        EXPECT_EQ(fought.screen({passed, kDay}), own.screen({0s, first + floor<seconds>(passed)}));
        EXPECT_NE(fought.screen({passed, kDay}), other.screen({passed, kDay}));
    }
}

TEST_F(Battle, IsRefusedWhenItIsNoMoment) {
    const HVTimeAreaBattle_G6 wrong{0x2023, 0x02, 0x29, 0, 0, 0, 0, 0};
    begin(kSix, {0, 0, 8, 8});
    ASSERT_EQ(program_timeAreaSetBattleTime_G6(test::kClockArea, &wrong), 0);
    const File file = integrate();
    const ParsedProgram parsed = parse_program(file.bytes, file.data, format());
    ASSERT_TRUE(std::holds_alternative<std::string>(parsed));
    EXPECT_NE(std::get<std::string>(parsed).find("battle time"), std::string::npos);
}

// Whatever a record says, it is read or refused, and what is read can be drawn.
TEST_F(Analog, SpoiltRecordsAreReadOrRefused) {
    for (const bool analog : {false, true})
        for (const ScreenKind& screen : {kFive, kSix}) {
            begin(screen, {3, 2, 40, 12});
            HVtimeAreaData_G56 content = lib::time_content();
            content.datestyle = MM_DD_MINUS;
            ASSERT_EQ(analog ? add(hands(8, 6), eLINE, kDial) : add(content), 0);
            const File file = integrate();
            const std::size_t head = screen.six ? 33 : 23, end = std::min(file.bytes.size() - 4, head + 150);
            int refused = 0;
            for (std::size_t at = head; at < end; ++at)
                for (const Ouint8 change : {Ouint8{0x01}, Ouint8{0x80}, Ouint8{0xFF}}) {
                    ByteBuffer spoilt(file.bytes.begin(), file.bytes.end() - 4);
                    spoilt[at] ^= change;
                    ByteWriter(spoilt).u32(calc_crc32(spoilt));
                    ParsedProgram parsed = screen.six ? parse_program(spoilt, file.data, format())
                                                      : parse_program(spoilt, format());
                    if (auto* program = std::get_if<sim::StoredProgram>(&parsed))
                        (void)ProgramPlayer(std::move(*program), {64, 16, format()}).picture(0s, {0s, kDay});
                    else
                        ++refused;
                }
            EXPECT_GT(refused, 30) << "lengths, counts, kinds and places";
        }
}

// From the exports through the network to the LEDs.
TEST_F(Analog, RunsOnAControllerByTheClockThatItWasSetTo) {
    std::atomic<std::int64_t> host{(kDay + 23h + 59min + 59s).time_since_epoch().count()};
    Simulator simulator({.type = lib::kMode4,
                         .width = 128,
                         .height = 16,
                         .clock = [&] { return LocalSeconds(seconds(host.load())); },
                         .uptime = [] { return 0ms; }});
    HVtimeAreaData_G56 content = lib::time_content();
    content.time_enable = true;
    begin(kSix, {0, 0, 128, 16});
    ASSERT_EQ(add(content), 0);
    const auto expected = played(128, 16);
    const File file = integrate_g6();
    Host uploader(simulator);
    ASSERT_EQ(uploader.write(file.dataName, file.data, 9), 0U);
    ASSERT_EQ(uploader.write(file.name, file.bytes), 0U);
    EXPECT_EQ(simulator.program_errors().size(), 0U);

    EXPECT_EQ(simulator.screen(), expected.screen({0s, kDay + 24h - 1s}));
    ++host;
    EXPECT_EQ(simulator.screen(), expected.screen({0s, kDay + 24h})) << "midnight";
    ASSERT_TRUE(uploader.control(2, "31 20 12 31 23 59 58 03").acknowledged());
    const LocalSeconds year_end = local_days(2031y / December / 31) + 23h + 59min + 58s;
    EXPECT_EQ(simulator.screen(), expected.screen({0s, year_end}));
    host += 2;
    EXPECT_EQ(simulator.screen(), expected.screen({0s, year_end + 2s})) << "the new year";
    EXPECT_NE(expected.screen({0s, year_end}), expected.screen({0s, year_end + 2s}));
}

TEST_F(Analog, AsksToBeDrawnAnewInTime) {
    begin(kSix, {0, 0, 32, 32});
    ASSERT_EQ(add(hands(16, 16), eLINE, kDial), 0);
    const auto player = played(32, 32);
    const auto next = player.next_change({1234ms, kDay});
    ASSERT_TRUE(next);
    EXPECT_GT(*next, 1234ms);
    EXPECT_LE(*next, 1334ms) << "no second of the clock is missed";
}

} // namespace
} // namespace qm::sim
