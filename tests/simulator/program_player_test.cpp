// What programs show at chosen moments. One LED of red a letter R, on a screen in planes of 8 pixels.
#include "simulator/playback/ProgramPlayer.h"

#include "hex.h"
#include "samples.h"

namespace qm::sim {
namespace {

using qm::test::hex;
using test::letters;
using namespace std::chrono_literals;

constexpr ScreenShape kScreen{8, 1, {TransferMode::planes8, ScreenColor::single}};
constexpr LocalSeconds kNoon{std::chrono::local_days(std::chrono::year(2024) / 5 / 6) + 12h};

Page page(const char* pixels, std::uint16_t stay, std::uint8_t mode = 1, std::uint16_t valid = 8) {
    Page page;
    page.pixels = hex(pixels);
    page.stay_time = stay;
    page.display_mode = mode;
    page.speed = 9; // a pixel every 10 ms
    page.valid_len = valid;
    return page;
}

StoredProgram program_of(std::vector<Page> pages, Rect rect = {0, 0, 8, 1}) {
    StoredProgram program;
    program.areas.push_back({AreaType::pictures, rect, {}, 0, 0, 0, {}, std::move(pages), {}});
    return program;
}

class Player {
  public:
    explicit Player(StoredProgram program) { m_list.put("P001", std::move(program)); }

    [[nodiscard]] std::string at(Milliseconds time, LocalSeconds clock = kNoon) const {
        return letters(m_list.screen({time, clock}));
    }
    [[nodiscard]] std::optional<Milliseconds> next(Milliseconds time, LocalSeconds clock = kNoon) const {
        return m_list.next_change({time, clock});
    }

  private:
    Playlist m_list{kScreen};
};

TEST(ProgramPlayer, TurnsPagesByTheirStayTime) {
    Page twice = page("FE", 50);
    twice.repeat_time = 2;
    const Player player(program_of({page("7F", 20), twice}));
    EXPECT_EQ(player.at(0ms), "R.......");
    EXPECT_EQ(player.at(199ms), "R.......");
    EXPECT_EQ(player.at(200ms), ".......R");
    EXPECT_EQ(player.at(1199ms), ".......R");
    EXPECT_EQ(player.at(1200ms), "R.......");
    EXPECT_EQ(player.next(0ms), 200ms);
    EXPECT_EQ(player.next(200ms), 1200ms);
    EXPECT_EQ(player.next(1250ms), 1400ms);
}

TEST(ProgramPlayer, NeedsNoRedrawForASinglePage) {
    const Player player(program_of({page("7F", 20)}));
    EXPECT_EQ(player.at(5h), "R.......");
    EXPECT_EQ(player.next(0ms), std::nullopt);
    EXPECT_EQ(Player(program_of({})).at(0ms), "........");
}

// The strip is R.......RR. : a whole page and 3 columns, for the rest of the last page counts no more.
TEST(ProgramPlayer, RunsTextToTheLeft) {
    std::vector<Page> pages{page("7F", 0, 4), page("20", 0, 4, 3)};
    for (Page& each : pages) each.speed = 19;
    const Player player(program_of(pages));
    const std::pair<int, const char*> steps[] = {
        {0, "........"},  {1, ".......R"},  {8, "R......."},  {9, ".......R"},  {10, "......RR"},
        {11, ".....RR."}, {16, "RR......"}, {17, "R......."}, {18, "........"}, {20, ".......R"}};
    for (const auto& [step, screen] : steps) {
        EXPECT_EQ(player.at(step * 20ms), screen) << step;
        EXPECT_EQ(player.at(step * 20ms + 19ms), screen) << step;
        EXPECT_EQ(player.next(step * 20ms + 7ms), (step + 1) * 20ms);
    }
}

TEST(ProgramPlayer, MovesBordersByTheirStepAndSpeed) {
    StoredProgram program = program_of({});
    program.border = BorderPattern{0, 1, 3, 0, 0, 8, 1, hex("7F")};
    const Player player(program);
    EXPECT_EQ(player.at(19ms), "R.......");
    EXPECT_EQ(player.at(20ms), "...R....");
    EXPECT_EQ(player.at(60ms), ".R......");
    EXPECT_EQ(player.next(25ms), 40ms);
    program.border->move_step = 0;
    EXPECT_EQ(Player(program).next(0ms), std::nullopt);
}

StoredProgram always(const char* pixels) { return program_of({page(pixels, 50)}); }

TEST(ProgramPlayer, StaysDarkOutsideItsPlayPeriods) {
    StoredProgram program = always("00");
    program.periods = {{12h, 12h + 59min + 59s}, {23h, 1h}};
    const Player player(program);
    const LocalSeconds midnight = kNoon - 12h;
    EXPECT_EQ(player.at(0ms, midnight + 11h + 59min + 59s), "........");
    EXPECT_EQ(player.at(0ms, kNoon), "RRRRRRRR");
    EXPECT_EQ(player.at(0ms, midnight + 12h + 59min + 59s), "RRRRRRRR");
    EXPECT_EQ(player.at(0ms, midnight + 13h), "........");
    EXPECT_EQ(player.at(0ms, midnight + 23h), "RRRRRRRR");
    EXPECT_EQ(player.at(0ms, midnight), "RRRRRRRR");
    EXPECT_EQ(player.at(0ms, midnight + 1h + 1s), "........");
    EXPECT_EQ(player.next(500ms, kNoon - 10s), 10s + 500ms);
    EXPECT_EQ(player.next(0ms, kNoon), 1h);
    EXPECT_EQ(player.next(0ms, midnight + 23h + 30min), 1h + 30min + 1s);
}

class Programs : public testing::Test {
  protected:
    [[nodiscard]] std::string at(Milliseconds time, std::optional<std::string> locked = {}) const {
        return m_list.playing({time, kNoon, locked});
    }
    Playlist m_list{kScreen};
};

TEST_F(Programs, TakeTurnsInTheOrderOfTheirNames) {
    StoredProgram timed = always("FE"), repeated = program_of({page("7F", 150), page("BF", 50)});
    timed.header.style = 1;
    timed.header.time_span = 3;
    repeated.header.play_times = 2; // of 2 seconds
    m_list.put("P002", timed);
    m_list.put("P001", repeated);
    EXPECT_EQ(at(0ms), "P001");
    EXPECT_EQ(at(3999ms), "P001");
    EXPECT_EQ(at(4s), "P002");
    EXPECT_EQ(at(6999ms), "P002");
    EXPECT_EQ(at(7s), "P001");
    EXPECT_EQ(letters(m_list.screen({8600ms, kNoon})), ".R......") << "it begins anew";
    EXPECT_EQ(m_list.next_change({0ms, kNoon}), 1500ms);
    EXPECT_EQ(m_list.next_change({4s, kNoon}), 7s);
    EXPECT_EQ(m_list.next_change({7s, kNoon}), 8500ms);
}

TEST_F(Programs, LeaveOutWhatIsNotToBePlayedNow) {
    StoredProgram morning = always("7F");
    morning.periods = {{8h, 9h}};
    m_list.put("P001", morning);
    EXPECT_EQ(at(0ms), "");
    EXPECT_EQ(letters(m_list.screen({0ms, kNoon})), "........");
    EXPECT_EQ(m_list.next_change({0ms, kNoon}), 20h);
    m_list.put("P002", always("FE"));
    EXPECT_EQ(at(0ms), "P002");
    EXPECT_EQ(at(99h), "P002");
    m_list.put("P001", always("FE"));
    EXPECT_EQ(at(0ms), "P001") << "replaced";
}

TEST_F(Programs, GiveWayToTheLockedOne) {
    m_list.put("P001", always("7F"));
    StoredProgram evening = always("FE");
    evening.periods = {{18h, 19h}};
    m_list.put("P002", evening);
    EXPECT_EQ(at(0ms, "P002"), "P002");
    EXPECT_EQ(letters(m_list.screen({50s, kNoon, "P002"})), ".......R");
    EXPECT_EQ(m_list.next_change({0ms, kNoon, "P002"}), std::nullopt);
    EXPECT_EQ(letters(m_list.screen({0ms, kNoon, "P009"})), "........");
}

} // namespace
} // namespace qm::sim
