// Device control through the exports: what each call changes in a controller.
#include "open_descriptors.h"
#include "outcome.h"
#include "qm_sdk_dual.h"
#include "simulator/Simulator.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>

namespace qm::test {
namespace {

constexpr char kHost[] = "127.0.0.1";
// 2026-11-21, a Saturday, 10:20:30.
constexpr sim::LocalSeconds kNow{std::chrono::sys_days{std::chrono::year{2026} / 11 / 21}.time_since_epoch() +
                                 std::chrono::seconds(10 * 3600 + 20 * 60 + 30)};

constexpr sim::LocalSeconds kLeapDay{
    std::chrono::sys_days{std::chrono::year{2024} / 2 / 29}.time_since_epoch()};
constexpr std::chrono::seconds kLastSeconds{24 * 3600 - 2};

class Control : public testing::Test {
  protected:
    sim::Simulator m_sim{{.clock = [] { return kNow; }}};
    const Ouint16 m_port = m_sim.port();
};

TEST_F(Control, ClockIsSetToNoTimeThatThereIsNot) {
    const auto set = [&](Ouint16 year, Ouint8 month, Ouint8 day, Ouint8 hour, Ouint8 minute, Ouint8 second) {
        return qm_set_clock(kHost, m_port, year, month, day, hour, minute, second);
    };
    EXPECT_EQ(set(2023, 2, 29, 0, 0, 0), QM_FAILED);
    EXPECT_EQ(set(2024, 13, 1, 0, 0, 0), QM_FAILED);
    EXPECT_EQ(set(0, 1, 1, 0, 0, 0), QM_FAILED);
    EXPECT_EQ(set(10000, 1, 1, 0, 0, 0), QM_FAILED);
    EXPECT_EQ(set(2024, 1, 1, 24, 0, 0), QM_FAILED);
    EXPECT_EQ(set(2024, 1, 1, 0, 60, 0), QM_FAILED);
    EXPECT_EQ(set(2024, 1, 1, 0, 0, 60), QM_FAILED);
    EXPECT_EQ(m_sim.connections(), 0U);
}

// What each call changes of what a controller says of itself.
TEST_F(Control, EveryCallHasItsEffect) {
    using State = const sim::Snapshot&;
    const Ouint8 both[] = {8, 0, 9, 30, 10, 15, 22, 59};
    const TimingReset reset{1, 0x0A0B0C0D, 1, 2, 3, 4, 5, 6};
    Brightness table{};
    table.HalfHourValue[0] = 5;
#define STEP(call, ...)                                                                                      \
    {                                                                                                        \
#call, [&] { return call; }, [](State s) { return __VA_ARGS__; }                                     \
    }
    const struct {
        const char* name;
        std::function<int()> call;
        bool (*done)(State);
    } steps[] = {
        STEP(qm_set_clock(kHost, m_port, 2024, 2, 29, 23, 59, 58), s.clock - kLeapDay == kLastSeconds),
        STEP(cmd_check_time(kHost, m_port), s.clock - kLeapDay > kLastSeconds + std::chrono::hours(24)),
        STEP(qm_set_clock(kHost, m_port, 2026, 11, 21, 10, 20, 30), s.clock == kNow),
        STEP(cmd_coerceOnOff(kHost, m_port, 0), !s.power),
        STEP(cmd_coerceOnOff(kHost, m_port, 1), s.power),
        STEP(cmd_timingOnOff(kHost, m_port, 2, both),
             s.power && s.timing == std::vector<sim::OnOffTime>{{8, 0, 9, 30}, {10, 15, 22, 59}}),
        STEP(cmd_timingOnOff(kHost, m_port, 1, both), !s.power),
        STEP(cmd_cancelTimingOnOff(kHost, m_port), s.timing.empty()),
        STEP(cmd_setBrightness(kHost, m_port, &table), s.brightness_level == 5),
        STEP(cmd_screenLock(kHost, m_port, 1, 1), s.screen_lock == sim::Lock{true, true}),
        STEP(cmd_screenLock(kHost, m_port, 0, 0), s.screen_lock == sim::Lock{}),
        STEP(cmd_programLock(kHost, m_port, 0, 1, "P007", 60), s.program_lock.program == "P007" &&
                                                                   s.program_lock.duration == 60 &&
                                                                   !s.program_lock.nonvolatile),
        STEP(cmd_sysReset(kHost, m_port), s.resets == 1 && !s.program_lock.locked),
        STEP(cmd_setPassword(kHost, m_port, "      ", "secret"), s.password == "secret"),
        STEP(cmd_deletePassword(kHost, m_port, "secret"), s.password.empty()),
        STEP(cmd_setDelayTime(kHost, m_port, 7), s.power_on_delay == 7),
        STEP(cmd_setBtnFunc(kHost, m_port, 1), s.button_mode == 1),
        STEP(cmd_setTimingReset(kHost, m_port, &reset),
             s.timing_reset == std::array<std::uint8_t, 11>{1, 0x0D, 0x0C, 0x0B, 0x0A, 1, 2, 3, 4, 5, 6}),
        STEP(cmd_setDispMode(kHost, m_port, 1), s.display_mode == 1),
        STEP(cmd_setSpeedAdjust(kHost, m_port, -3), s.speed == -3),
        STEP(cmd_setScreenAddress(kHost, m_port, 0x0102), s.address == 0x0102),
        STEP(update_firmware(kHost, m_port, "no such file"), s.firmware.empty()),
    };
    for (const auto& step : steps) {
        EXPECT_EQ(step.call(), 0) << step.name;
        EXPECT_TRUE(step.done(m_sim.state())) << step.name;
    }
    EXPECT_GT(cmd_firmwareActivate(kHost, m_port, "FW99"), 1) << "there is no such file";
}

TEST_F(Control, TellsItsState) {
    ControllerStatus_G56 status{};
    ASSERT_EQ(cmd_check_controllerStatus(kHost, m_port, &status), 0);
    EXPECT_EQ(status.onoffStatus, 1);
    EXPECT_EQ(status.RTCHour, 0x10);
    EXPECT_EQ(status.RTCWeek, 6);
    Ouint8 id[9] = {0, 0, 0, 0, 0, 0, 0, 0, 0x77};
    EXPECT_EQ(cmd_readControllerID(kHost, m_port, id), 0);
    EXPECT_EQ(id[8], 0x77);
    NetSearchCmdRet found{};
    ASSERT_EQ(cmd_tcpNetworkSearch_6G(kHost, m_port, &found), 0);
    EXPECT_EQ(int{found.ScreenWidth}, 128);
    NetSearchCmdRet_Web web{};
    ASSERT_EQ(cmd_tcpNetworkSearch_6G_Web(kHost, m_port, &web), 0);
    EXPECT_EQ(std::memcmp(&web, &found, offsetof(NetSearchCmdRet, BarCode)), 0) << "where they are alike";
    BattleTime battle{};
    EXPECT_EQ(cmd_battieTime(kHost, m_port, 0, &battle), 0);
    Ouint32 value = 7;
    EXPECT_EQ(cmd_getStopwatch(kHost, m_port, 0, &value), -1);
    EXPECT_EQ(cmd_getSensorBrightnessValue(kHost, m_port, &value), -1);
    EXPECT_EQ(value, 7U) << "the calls have no room for one";
}

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
                               cmd_tcpPing(nullptr, port, &ping),
                               cmd_tcpPing(kHost, port, nullptr),
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
        EXPECT_EQ(result.status, -1) << &result - on_serial_lines;
        EXPECT_EQ(result.reason, "Serial lines are not implemented.");
    }
    EXPECT_EQ(sim.connections(), 0U);
}

TEST(ControlCalls, LeaveRecordsAsTheyAreWhereNothingListens) {
    const Ouint16 port = [] { return sim::Simulator().port(); }(); // which has gone
    const std::string before(64, '\x5A');
    const std::size_t descriptors = open_descriptors();
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
    EXPECT_EQ(open_descriptors(), descriptors);
}

} // namespace
} // namespace qm::test
