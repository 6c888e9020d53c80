// Dynamic areas beside the programs that a controller plays: which of them are shown, and for how long. Time
// stands still until a test moves it.
#include "host.h"
#include "program_samples.h"
#include "samples.h"
#include "simulator/playback/PlayedArea.h"

#include <gmock/gmock.h>

#include <atomic>

namespace qm::sim {
namespace {

using test::hex;
using namespace std::chrono_literals;

// Bytes in hex, one piece behind the other.
ByteBuffer joined(std::initializer_list<std::string_view> parts) {
    std::string text;
    for (const std::string_view part : parts) text.append(part).append(" ");
    return hex(text);
}

// A program that lights the same LEDs all the time.
void write_program(test::Host& host, int number, const std::string& pixels) {
    const std::string digit = std::to_string(number), digits = "30 30 3" + digit;
    ASSERT_EQ(host.write("P00" + digit, test::program_file("50 " + digits)), 0U);
    ASSERT_EQ(host.write("D00" + digit, test::data_file(pixels + " " + pixels, digits), 9), 0U);
}

class AreaPlaying : public testing::Test {
  protected:
    // An area of the whole screen with one page of pixels, in the form of generation 6.
    void show(int id, const std::string& pixels, const std::string& programs = "01 00 00",
              const std::string& at_once = "01", const std::string& end = "00 05 00") {
        const std::string number = std::string("0").append(std::to_string(id));
        const auto length = 63 + hex(programs).size() - 3; // the numbers of programs come on top
        ASSERT_LT(length, 80U);
        const std::string high =
            std::string(1, length < 64 ? '3' : '4').append(1, "0123456789ABCDEF"[length % 16]);
        ASSERT_TRUE(m_host
                        .ask(0xA7, 0,
                             joined({"01 00", high, "00 00 00", number, end, programs, at_once,
                                     "00*4 10 00 00 00 00 08 00 01 00 00 00 00 00 00 00*5 01 00",
                                     "1A 00 00 00 00 01 00 00 00 00 01 08 00 00*9 00*4 01 00 00 00", pixels}))
                        .acknowledged());
    }
    [[nodiscard]] std::string screen() const { return test::letters(m_sim.screen()); }

    std::atomic<std::chrono::milliseconds> m_up{0ms};
    Simulator m_sim{{.type = 0x0662, .width = 8, .height = 1, .color = ScreenColor::single, .uptime = [this] {
                         return m_up.load();
                     }}};
    test::Host m_host{m_sim};
};

TEST_F(AreaPlaying, AnAreaIsShownWithItsProgramsOnly) {
    show(1, "F7", "00 01 00 02 00");
    EXPECT_EQ(screen(), "........") << "no program is played";
    write_program(m_host, 1, "7F");
    EXPECT_EQ(screen(), "R.......") << "another program";
    write_program(m_host, 2, "BF");
    m_up = 1000ms; // the second of the first is over
    EXPECT_EQ(screen(), "....R...") << "its program, which it covers";
    m_up = 2000ms;
    EXPECT_EQ(screen(), "R.......");
    show(1, "EF");
    EXPECT_EQ(screen(), "...R....") << "all programs again";
}

TEST_F(AreaPlaying, AnAreaThatIsToInterruptNothingWaitsForTheNextProgram) {
    write_program(m_host, 1, "7F");
    show(3, "FD", "01 00 00", "00");
    EXPECT_EQ(screen(), "......R.") << "a program that is alone has no end to wait for";
    write_program(m_host, 2, "BF");
    show(1, "F7", "01 00 00", "00");
    EXPECT_EQ(screen(), "......R.");
    m_up = 1000ms;
    EXPECT_EQ(screen(), "....R...");
    show(1, "EF", "01 00 00", "00");
    EXPECT_EQ(screen(), "...R....") << "what is on the screen is replaced at once";
    show(2, "FE", "01 00 00", "01");
    EXPECT_EQ(screen(), ".......R");
}

TEST_F(AreaPlaying, AnAreaWithARunModeEndsUnlessItIsSentAnew) {
    show(1, "F7", "01 00 00", "01", "01 05 00");
    m_up = 4999ms;
    EXPECT_EQ(screen(), "....R...");
    show(1, "F7", "01 00 00", "01", "01 05 00");
    m_up = 9998ms;
    EXPECT_EQ(screen(), "....R...");
    m_up = 9999ms;
    EXPECT_EQ(screen(), "........");
    show(1, "EF", "01 00 00", "01", "00 05 00");
    m_up = 99999ms;
    EXPECT_EQ(screen(), "...R....") << "run mode 0 has no end";
    show(2, "7F", "01 00 00", "01", "01 00 00");
    m_up = 999999ms;
    EXPECT_EQ(screen(), "R.......") << "nor has a time-out of 0";
}

TEST_F(AreaPlaying, PagesTurnFromTheMomentAtWhichTheAreaIsSent) {
    m_up = 500ms;
    const ByteBuffer content = test::content_of({{1, {0, 0, 8, 1}, {hex("7F"), hex("FE")}}});
    EXPECT_TRUE(m_host.ask(0xA7, 0, content).acknowledged());
    const std::pair<std::chrono::milliseconds, const char*> moments[] = {
        {500ms, "R......."}, {3499ms, "R......."}, {3500ms, ".......R"}, {6500ms, "R......."}};
    for (const auto& [moment, shown] : moments) {
        m_up = moment;
        EXPECT_EQ(screen(), shown) << moment.count();
    }
    m_up = 10000ms;
    EXPECT_TRUE(m_host.ask(0xA7, 0, content).acknowledged());
    EXPECT_EQ(screen(), "R.......") << "what is sent again begins anew";
}

TEST(PlayedAreas, SayWhenTheyNextShowSomethingElse) {
    const auto parsed = parse_dynamic_areas(test::content_of({{1, {0, 0, 8, 1}, {hex("7F"), hex("FE")}}}));
    ReceivedArea area = std::get<std::vector<ReceivedArea>>(parsed).at(0);
    area.with_all_programs = false;
    area.programs = {1};
    std::vector<PlayedArea> areas;
    areas.emplace_back(area, PixelFormat{TransferMode::planes8, ScreenColor::single}, 500ms);
    area.id = 2;
    area.pages.pop_back();
    area.run_mode = 1;
    areas.emplace_back(area, PixelFormat{TransferMode::planes8, ScreenColor::single}, 0ms);
    EXPECT_EQ(next_change(areas, 100ms, "P001"), 500ms) << "one comes";
    EXPECT_EQ(next_change(areas, 600ms, "P001"), 3500ms) << "its page turns";
    EXPECT_EQ(next_change(areas, 600ms, "P002"), 5s) << "the other one ends, and none is seen before";
    EXPECT_EQ(next_change(areas, 5s, "P001"), 6500ms);
    EXPECT_EQ(next_change(areas, 5s, "P002"), std::nullopt);
}

TEST_F(AreaPlaying, DeletedAreasAreGone) {
    show(1, "7F");
    show(2, "BF");
    show(3, "DF");
    EXPECT_TRUE(m_host.ask(0xA7, 1, hex("01 03")).acknowledged());
    EXPECT_EQ(screen(), ".R......");
    EXPECT_TRUE(m_host.ask(0xA7, 1, hex("02 02 09")).acknowledged()) << "there is no 9, which is no matter";
    EXPECT_EQ(screen(), "R.......");
    EXPECT_TRUE(m_host.ask(0xA7, 1, hex("00")).acknowledged());
    EXPECT_EQ(screen(), "R.......");
    for (const char* bad : {"FE", "02 01", "01 01 01", "FF 01"})
        EXPECT_TRUE(m_host.ask(0xA7, 1, hex(bad)).refused());
    EXPECT_TRUE(m_host.ask(0xA7, 1, hex("FF")).acknowledged());
    EXPECT_EQ(screen(), "........");
    EXPECT_TRUE(m_sim.dynamic_areas().empty());
}

TEST_F(AreaPlaying, SpeechIsKeptAndContradictionsAreRefused) {
    const std::string sound = "01 02 03 04 05 00 00 00 06 00 00 00 07 08 09 0A 02 00 00 00 68 69";
    const char* insertion = "01 02 00 00 00 16 00 00 00";
    const char *first = "00 02 05 16 00 00 00", *second = "04 16 00 00 00";
    EXPECT_TRUE(m_host.ask(0xA7, 7, joined({insertion, sound})).acknowledged());
    EXPECT_TRUE(m_host.ask(0xA7, 2, joined({first, sound, second, sound})).acknowledged());
    for (const ByteBuffer& bad : {joined({"01 02 00 00 00 15 00 00 00", sound}),
                                  joined({insertion, sound, "00"}), hex("01 02 00 00 00 FF FF FF FF")})
        EXPECT_TRUE(m_host.ask(0xA7, 7, bad).refused());
    for (const ByteBuffer& bad :
         {joined({"00 01 05 17 00 00 00", sound}), joined({first, sound}), hex("00 00")})
        EXPECT_TRUE(m_host.ask(0xA7, 2, bad).refused());
    auto voices = m_sim.state().voices;
    ASSERT_EQ(voices.size(), 3U);
    EXPECT_EQ(voices[0].id, 4);
    EXPECT_EQ(voices[1].id, 5);
    EXPECT_EQ(voices[2].flag, 2);
    EXPECT_EQ(voices[2].sound.text, hex("68 69"));
    EXPECT_TRUE(m_host.control(1, "").acknowledged());
    voices = m_sim.state().voices;
    ASSERT_EQ(voices.size(), 1U) << "after a reset, what was to be stored is left";
    EXPECT_FALSE(voices[0].id);
}

TEST(DynamicAreas5, CutAnywhereOrLengthenedTheyAreRefused) {
    const ByteBuffer whole =
        hex("29 00 00 00 09 01 03 02 01 00 00 01 00*4 10 05 00 01 00 08 00 01 00 00 01 00 "
            "0D 00 00 00 00 01 00 00 00 00 01 08 00 00*4");
    const auto parsed = parse_dynamic_area_5(whole);
    ASSERT_TRUE(std::holds_alternative<std::vector<ReceivedArea>>(parsed));
    const ReceivedArea& area = std::get<std::vector<ReceivedArea>>(parsed).at(0);
    EXPECT_EQ(area.timeout, 0x0203);
    EXPECT_EQ(area.rect, (Rect{5, 1, 8, 1}));
    EXPECT_EQ(area.pages.at(0).valid_len, 8);
    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_TRUE(std::holds_alternative<ErrorValue>(parse_dynamic_area_5(Bytes(whole).first(length))))
            << length;
    for (std::size_t at = 0; at < 4; ++at) {
        ByteBuffer spoilt = whole;
        spoilt[at] ^= 1;
        EXPECT_TRUE(std::holds_alternative<ErrorValue>(parse_dynamic_area_5(spoilt))) << at;
    }
    ByteBuffer shorter = whole; // a page shorter than its own properties
    shorter[28] = 12;
    EXPECT_TRUE(std::holds_alternative<ErrorValue>(parse_dynamic_area_5(shorter)));
}

} // namespace
} // namespace qm::sim
