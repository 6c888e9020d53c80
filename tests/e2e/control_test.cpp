// Device control through the exports: what each call changes in a controller, and what its faults do to it.
#include "drawing.h"
#include "outcome.h"
#include "simulator/Simulator.h"

#include <gtest/gtest.h>

#include <functional>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1";
// 2026-11-21, a Saturday, 10:20:30.
constexpr sim::LocalSeconds kNow{std::chrono::sys_days{std::chrono::year{2026} / 11 / 21}.time_since_epoch() +
                                 std::chrono::seconds(10 * 3600 + 20 * 60 + 30)};

class Control : public testing::TestWithParam<Ouint16> {
  protected:
    static sim::Options options(Ouint16 type) {
        sim::Options o;
        o.type = type;
        o.clock = [] { return kNow; };
        return o;
    }
    [[nodiscard]] sim::Snapshot state() const { return m_sim.state(); }
    [[nodiscard]] Ouint16 port() const { return m_sim.port(); }
    void show_text(const char* text) {
        ASSERT_EQ(test::show_text(m_sim, GetParam(), SCREEN_COLOR_DOUBLE, rectangle(0, 0, 128, 32),
                                  still_text(12, eRed), text),
                  0);
    }

    sim::Simulator m_sim{options(GetParam())};
};

TEST_P(Control, SwitchesTheScreen) {
    show_text("on");
    const int lit = lit_pixels(m_sim.screen());
    EXPECT_GT(lit, 0);
    EXPECT_EQ(cmd_coerceOnOff(kHost, port(), 0), 0);
    EXPECT_EQ(lit_pixels(m_sim.screen()), 0);
    EXPECT_EQ(cmd_coerceOnOff(kHost, port(), 1), 0);
    EXPECT_EQ(lit_pixels(m_sim.screen()), lit);
}

TEST_P(Control, SwitchesTheScreenByTimer) {
    const Ouint8 morning[] = {8, 0, 9, 30}, both[] = {8, 0, 9, 30, 10, 15, 22, 59};
    EXPECT_EQ(cmd_timingOnOff(kHost, port(), 1, morning), 0);
    EXPECT_FALSE(state().power);
    EXPECT_EQ(cmd_timingOnOff(kHost, port(), 2, both), 0);
    EXPECT_TRUE(state().power);
    EXPECT_EQ(state().timing, (std::vector<sim::OnOffTime>{{8, 0, 9, 30}, {10, 15, 22, 59}}));
    EXPECT_EQ(cmd_cancelTimingOnOff(kHost, port()), 0);
    EXPECT_TRUE(state().timing.empty());
}

TEST_P(Control, DimsTheScreen) {
    show_text("dim");
    const sim::Image bright = m_sim.screen();
    Brightness table{};
    for (Ouint8& level : table.HalfHourValue) level = 5;
    EXPECT_EQ(cmd_setBrightness(kHost, port(), &table), 0);
    EXPECT_EQ(state().brightness_level, 5U);
    EXPECT_NE(m_sim.screen(), bright);
    EXPECT_EQ(lit_pixels(m_sim.screen()), lit_pixels(bright)) << "dimmer, not dark";
}

TEST_P(Control, LocksScreenAndProgram) {
    EXPECT_EQ(cmd_screenLock(kHost, port(), 1, 1), 0);
    EXPECT_EQ(state().screen_lock, (sim::Lock{true, true}));
    EXPECT_EQ(cmd_screenLock(kHost, port(), 0, 0), 0);
    EXPECT_FALSE(state().screen_lock.locked);
    EXPECT_EQ(cmd_programLock(kHost, port(), 0, 1, "P007", 60), 0);
    EXPECT_EQ(state().program_lock.program, "P007");
    EXPECT_EQ(state().program_lock.duration, 60U);
    EXPECT_EQ(cmd_sysReset(kHost, port()), 0);
    EXPECT_FALSE(state().program_lock.locked) << "a restart ends what is not kept";
    EXPECT_EQ(state().resets, 1U);
}

TEST_P(Control, GuardsItsPassword) {
    EXPECT_EQ(cmd_setPassword(kHost, port(), "      ", "secret"), 0);
    EXPECT_EQ(state().password, "secret");
    EXPECT_GT(cmd_setPassword(kHost, port(), "wrong!", "other!"), 1) << "refused by the controller";
    EXPECT_EQ(state().password, "secret");
    EXPECT_EQ(cmd_setPassword(kHost, port(), "secret", "other!"), 0);
    EXPECT_GT(cmd_deletePassword(kHost, port(), "secret"), 1);
    EXPECT_EQ(cmd_deletePassword(kHost, port(), "other!"), 0);
    EXPECT_EQ(state().password, "");
}

TEST_P(Control, SetsWhatElseThereIs) {
    const TimingReset reset{1, 0x0A0B0C0D, 1, 2, 3, 4, 5, 6};
    EXPECT_EQ(cmd_setDelayTime(kHost, port(), 7), 0);
    EXPECT_EQ(cmd_setBtnFunc(kHost, port(), 1), 0);
    EXPECT_EQ(cmd_setTimingReset(kHost, port(), &reset), 0);
    EXPECT_EQ(cmd_setDispMode(kHost, port(), 1), 0);
    EXPECT_EQ(cmd_setSpeedAdjust(kHost, port(), -3), 0);
    EXPECT_EQ(cmd_setScreenAddress(kHost, port(), 0x0102), 0);
    const sim::Snapshot s = state();
    EXPECT_EQ(s.power_on_delay, 7);
    EXPECT_EQ(s.button_mode, 1);
    EXPECT_EQ(s.timing_reset, (std::array<std::uint8_t, 11>{1, 0x0D, 0x0C, 0x0B, 0x0A, 1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(s.display_mode, 1);
    EXPECT_EQ(s.speed, -3);
    EXPECT_EQ(s.address, 0x0102);
    EXPECT_EQ(update_firmware(kHost, port(), "no such file"), 0);
    EXPECT_GT(cmd_firmwareActivate(kHost, port(), "FW99"), 1) << "there is no such file";
}

TEST_P(Control, TellsItsState) {
    const Ouint8 times[] = {1, 0, 23, 0};
    cmd_timingOnOff(kHost, port(), 1, times);
    cmd_screenLock(kHost, port(), 0, 1);
    ControllerStatus_G56 status{};
    ASSERT_EQ(cmd_check_controllerStatus(kHost, port(), &status), 0);
    EXPECT_EQ(status.onoffStatus, 1);
    EXPECT_EQ(status.timingOnOff, 1);
    EXPECT_EQ(status.screenLockStatus, 1);
    EXPECT_EQ(status.RTCHour, 0x10);
    EXPECT_EQ(status.RTCMinute, 0x20);
    EXPECT_EQ(status.RTCSecond, 0x30);
    EXPECT_EQ(status.RTCWeek, 6);

    Ouint8 id[9] = {};
    id[8] = 0x77;
    EXPECT_EQ(cmd_readControllerID(kHost, port(), id), 0);
    EXPECT_EQ(id[8], 0x77);
    NetSearchCmdRet found{};
    ASSERT_EQ(cmd_tcpNetworkSearch_6G(kHost, port(), &found), 0);
    EXPECT_EQ(int{found.ScreenWidth}, 128);
    EXPECT_EQ(int{found.ControllerType}, GetParam());
    BattleTime battle{};
    EXPECT_EQ(cmd_battieTime(kHost, port(), 0, &battle), 0);
}

TEST_P(Control, ReadsNoValueWhereTheCallsHaveNoRoomForOne) {
    Ouint32 value = 7;
    EXPECT_EQ(cmd_getStopwatch(kHost, port(), 0, &value), -1);
    EXPECT_EQ(cmd_getSensorBrightnessValue(kHost, port(), &value), -1);
    EXPECT_EQ(value, 7U);
}

INSTANTIATE_TEST_SUITE_P(Generation, Control, testing::Values(Ouint16{0x0051}, Ouint16{0x0262}),
                         [](const auto& test) { return test.param == 0x0051 ? "5" : "6"; });

TEST(ControlCalls, RefuseNullPointersAndSerialLines) {
    const sim::Simulator sim;
    const Ouint16 port = sim.port();
    Ouint32 word = 0;
    Ouint8 byte = 0;
    char name[] = "P001";
    GetDirBlock_G56 dir{};
    ConfigFile config{};
    Ping_data ping{};
    NetSearchCmdRet net{};
    NetSearchCmdRet_Web web{};
    const Outcome results[] = {cmd_sysReset(nullptr, port),
                               cmd_timingOnOff(kHost, port, 1, nullptr),
                               cmd_setBrightness(kHost, port, nullptr),
                               cmd_readControllerID(kHost, port, nullptr),
                               cmd_programLock(kHost, port, 0, 1, nullptr, 0),
                               cmd_check_controllerStatus(kHost, port, nullptr),
                               cmd_setPassword(kHost, port, nullptr, "secret"),
                               cmd_deletePassword(kHost, port, nullptr),
                               cmd_setTimingReset(kHost, port, nullptr),
                               cmd_battieTime(kHost, port, 0, nullptr),
                               cmd_getStopwatch(kHost, port, 0, nullptr),
                               cmd_firmwareActivate(kHost, port, nullptr),
                               cmd_tcpNetworkSearch_6G(kHost, port, nullptr),
                               cmd_uart_ofsFormat(nullptr, 1)};
    const Outcome on_serial_lines[] = {cmd_uart_programLock("/dev/ttyS0", 1, 0, 1, name, 0),
                                       cmd_uart_programLock_6G("/dev/ttyS0", 1, 0, 1, name, 0),
                                       cmd_uart_searchController(&ping, "/dev/ttyS0"),
                                       cmd_uart_search_Net_6G(&net, "/dev/ttyS0", 1),
                                       cmd_uart_search_Net_6G_Web(&web, "/dev/ttyS0", 1),
                                       cmd_uart_ofsFormat("/dev/ttyS0", 1),
                                       cmd_uart_ofsStartFileTransf("/dev/ttyS0", 1),
                                       cmd_uart_ofsEndFileTransf("/dev/ttyS0", 1),
                                       cmd_uart_ofsDeleteFormatFile("/dev/ttyS0", 1, 1, name),
                                       cmd_uart_confDeleteFormatFile("/dev/ttyS0", 1, 1, name),
                                       cmd_uart_ofsGetMemoryVolume("/dev/ttyS0", 1, &word, &word),
                                       cmd_uart_confWriteFile("/dev/ttyS0", 1, name, 0, 1, 1, &byte),
                                       cmd_uart_ofsStartReedFile("/dev/ttyS0", 1, name, &word, &word),
                                       cmd_uart_confStartReedFile("/dev/ttyS0", 1, name, &word, &word),
                                       cmd_uart_ofsReedFileBlock("/dev/ttyS0", 1, name, &byte),
                                       cmd_uart_confReedFileBlock("/dev/ttyS0", 1, name, &byte),
                                       cmd_uart_ofsWriteFile("/dev/ttyS0", 1, name, 0, 1, 1, &byte),
                                       cmd_uart_ofsReedDirBlock("/dev/ttyS0", 1, &dir),
                                       cmd_uart_ofsFreeDirBlock("/dev/ttyS0", 1, &dir),
                                       cmd_uart_ofsGetTransStatus("/dev/ttyS0", 1, &byte, name, &word, &word),
                                       cmd_uart_sendConfigFile("/dev/ttyS0", 1, &config)};
    for (const Outcome& result : results) EXPECT_TRUE(refuses_an_argument(result)) << &result - results;
    for (const Outcome& result : on_serial_lines) {
        EXPECT_EQ(result.status, -1);
        EXPECT_EQ(result.reason, "Serial lines are not implemented.");
    }
    EXPECT_EQ(sim.connections(), 0U);
}

TEST(ControlCalls, LeaveRecordsAsTheyAreWhereNothingListens) {
    const Ouint16 port = [] { return sim::Simulator().port(); }(); // which has gone
    const std::string before(64, '\x5A');
    const auto untouched = [&](auto&& call) {
        std::string record = before;
        EXPECT_EQ(call(record.data()), -1);
        EXPECT_EQ(record, before);
    };
    untouched([&](char* r) { return cmd_readControllerID(kHost, port, reinterpret_cast<Ouint8*>(r)); });
    untouched([&](char* r) {
        return cmd_check_controllerStatus(kHost, port, reinterpret_cast<ControllerStatus_G56*>(r));
    });
    untouched([&](char* r) { return cmd_battieTime(kHost, port, 1, reinterpret_cast<BattleTime*>(r)); });
    untouched([&](char* r) { return cmd_tcpPing(kHost, port, reinterpret_cast<Ping_data*>(r)); });
}

// One call of each family, to be met by each fault.
struct Call {
    const char* name;
    std::function<Outcome(Ouint16 port)> run;
};
const Call kCalls[] = {
    {"Control", [](Ouint16 port) { return cmd_coerceOnOff(kHost, port, 1); }},
    {"Query",
     [](Ouint16 port) {
         ControllerStatus_G56 status{};
         return cmd_check_controllerStatus(kHost, port, &status);
     }},
    {"NetworkSearch",
     [](Ouint16 port) {
         NetSearchCmdRet found{};
         return cmd_tcpNetworkSearch_6G(kHost, port, &found);
     }},
    {"Memory",
     [](Ouint16 port) {
         Ouint32 total = 0, available = 0;
         return cmd_ofsGetMemoryVolume(kHost, port, &total, &available);
     }},
    {"Write",
     [](Ouint16 port) {
         const ByteBuffer data(3000, 7);
         return cmd_ofsWriteFile(kHost, port, "F001", 0, 3000, 1, data.data());
     }},
    {"Directory",
     [](Ouint16 port) {
         GetDirBlock_G56 dir{};
         const Outcome listed = cmd_ofsReedDirBlock(kHost, port, &dir);
         cmd_ofs_freeDirBlock(&dir);
         return listed;
     }},
    {"Config",
     [](Ouint16 port) {
         ConfigFile_G6 config{};
         return cmd_sendConfigFile_G6(kHost, port, &config);
     }},
};

class CallFaults : public testing::TestWithParam<std::tuple<Call, sim::FaultKind>> {};

TEST_P(CallFaults, EndTheCallAndSpareTheNextOne) {
    const auto& [call, kind] = GetParam();
    sim::Simulator sim;
    sim.set_fault(sim::Fault{.kind = kind, .after = 1}); // the handshake goes well
    const Outcome outcome = call.run(sim.port());
    EXPECT_EQ(outcome.status == 0, kind == sim::FaultKind::delay);
    EXPECT_EQ(outcome.reason.empty(), outcome.status == 0);
    sim.set_fault(std::nullopt);
    EXPECT_EQ(call.run(sim.port()).status, 0);
    EXPECT_TRUE(sim.wait_idle());
}

INSTANTIATE_TEST_SUITE_P(
    Every, CallFaults,
    testing::Combine(testing::ValuesIn(kCalls),
                     testing::Values(sim::FaultKind::silence, sim::FaultKind::close, sim::FaultKind::reset,
                                     sim::FaultKind::split, sim::FaultKind::bad_crc,
                                     sim::FaultKind::bad_header, sim::FaultKind::wrong_code,
                                     sim::FaultKind::nack, sim::FaultKind::garbage,
                                     sim::FaultKind::false_length, sim::FaultKind::delay)),
    [](const auto& test) {
        std::string name(sim::name_of(std::get<1>(test.param)));
        std::erase(name, '-');
        return std::get<0>(test.param).name + name;
    });

} // namespace
} // namespace qm::test
