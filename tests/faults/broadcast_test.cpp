// Every call that broadcasts, with every fault of the simulator and with each answer cut after every byte.
#include "CuttingRelay.h"
#include "OwnHosts.h"
#include "simulator/Simulator.h"

#include <gtest/gtest.h>

#include <sstream>

namespace qm::test {
namespace {

using sim::FaultKind;

constexpr Ouint16 kUdp = 5007, kWifi = 13769, kTcp = 5005;
constexpr std::size_t kInTime = 8, kCut = 9, kCutOnce = 10, kProbeUnanswered = 11, kSettingUnanswered = 12,
                      kSettingCut = 13, kRestartUnanswered = 14, kSettingsCut = 15;

const std::vector<Row> kRows = {
    {"none comes", {-1}, {"Nobody answered within N s."}},
    {"its CRC is wrong", {-3}, {"The CRC of the answer is wrong."}},
    {"its header checksum is wrong", {-2}, {"The header checksum of the answer is wrong."}},
    {"it is to another command", {-5}, {"The answer is to another command: group N, code N."}},
    {"the controller refuses", {199}, {"The controller refused with error N."}},
    {"bytes come that are no frame", {-1}, {"The answer is not a frame: its N bytes begin with N."}},
    {"it is 4 KB longer than it should be", {1}, {"The answer has N bytes, and there is room for N."}},
    {"its length claims more than it holds",
     {-3},
     {"The answer was cut at N bytes: its lengths announce more."}},
    {"it comes late, but in time", {0}, {""}},
    {"it is cut after any byte",
     {-1},
     {"The answer of N bytes is too short.", "The answer was cut at N bytes: its end is missing."}},
    {"it is cut once, after any byte, while others are as they should be", {0}, {""}},
    {"the Wi-Fi module does not answer the probe", {0}, {""}},
    {"it does not answer a setting, or the question for them", {-1}, {"Nobody answered within N s."}},
    {"its answer to the probe or a setting is cut after any byte",
     {-1},
     {"The answer of N bytes is too short."}},
    {"it does not answer when it is to restart, or is cut", {0}, {""}},
    {"its settings are cut before byte 15", {-1}, {"The answer of N bytes is too short."}},
    {"its settings are cut before byte 38",
     {2},
     {"The Wi-Fi module's answer of N bytes is too short for its settings."}},
    {"its settings are cut later", {0}, {""}},
};

// By all its paths but the fixed address, which is nobody's here.
const TalkingCall kSearch = {"cmd_searchController", Talks::by_broadcast, [](Ouint16) -> Given {
                                 Ping_data found{};
                                 return cmd_searchController(&found);
                             }};

// Of the Wi-Fi module: a probe, then settings and a restart, or the question for them.
std::size_t row_of(const TalkingCall& call, Cut cut) {
    constexpr std::size_t kRestart = 5;
    const bool silent = cut.after == After::silence,
               asked = call.name == "cmd_AT_getWifiSsidPwd" && cut.answer > 0;
    if (&call == &kSearch) return kCutOnce;
    if (call.talks == Talks::by_broadcast) return kCut;
    if (silent && cut.answer == 0) return kProbeUnanswered;
    if (cut.answer == kRestart) return kRestartUnanswered;
    if (silent) return kSettingUnanswered;
    if (!asked) return kSettingCut;
    if (cut.bytes < 15) return kSettingsCut;
    return cut.bytes < 38 ? kSettingsCut + 1 : kSettingsCut + 2;
}

std::size_t row_of(FaultKind kind) {
    switch (kind) {
    case FaultKind::silence:
    case FaultKind::close:
    case FaultKind::reset:
        return 0;
    case FaultKind::bad_crc:
        return 1;
    case FaultKind::bad_header:
        return 2;
    case FaultKind::wrong_code:
        return 3;
    case FaultKind::nack:
        return 4;
    case FaultKind::garbage:
        return 5;
    case FaultKind::oversize:
        return 6;
    case FaultKind::false_length:
        return 7;
    case FaultKind::split: // a datagram comes whole
    case FaultKind::delay:
        return kInTime;
    }
    return kRows.size();
}

Met with_fault(const TalkingCall& call, sim::Fault fault) {
    sim::Options options{.listen = "0.0.0.0", .port = kTcp, .fault = fault, .udp = kUdp};
    if (&call == &kSearch) options.wifi = kWifi;
    sim::Simulator sim(options);
    return meet(call, 0, [&] { sim.set_fault(std::nullopt); });
}

// The search also asks a Wi-Fi module, behind which there is nobody.
struct Relayed {
    sim::Simulator sim;
    CuttingRelay relay;
    explicit Relayed(const TalkingCall& call)
        : sim({.udp = 0,
               .wifi = &call == &kSearch ? kWifi : Ouint16{0},
               .clock = [] { return sim::LocalSeconds{}; }}), // so that an answer with it is always as long
          relay(call.talks == Talks::to_wifi_module ? kWifi : kUdp,
                call.talks == Talks::to_wifi_module ? sim.wifi_port() : sim.udp_port()) {}
};

Met with_cut(const TalkingCall& call, Cut cut) {
    Relayed controller(call);
    controller.relay.begin(cut);
    return meet(call, 0, [&] { controller.relay.begin({}); });
}

// The lengths of the answers, as the reason.
Met measured(const TalkingCall& call) {
    Relayed controller(call);
    const int status = call.run(0);
    std::ostringstream lengths;
    for (const std::size_t length : controller.relay.lengths()) lengths << length << ' ';
    return {status, lengths.str(), 0, status};
}

void add_faults(std::vector<Case>& cases, const TalkingCall& call) {
    for (int kind = 0; kind <= static_cast<int>(FaultKind::delay); ++kind)
        for (const unsigned step : {0U, 1U}) {
            const sim::Fault fault{
                .kind = static_cast<FaultKind>(kind), .after = step, .delay = std::chrono::milliseconds(20)};
            cases.push_back({&call, row_of(fault.kind), "from answer " + std::to_string(step) + " on", 0,
                             [&call, fault] { return with_fault(call, fault); }, 40});
        }
}

void add_cuts(std::vector<Case>& cases, const TalkingCall& call, const std::string& lengths) {
    const bool module = call.talks == Talks::to_wifi_module;
    const auto add = [&](Cut cut) {
        const std::string where =
            std::to_string(cut.bytes) + " bytes of answer " + std::to_string(cut.answer);
        cases.push_back({&call, row_of(call, cut), where, 0, [&call, cut] { return with_cut(call, cut); }});
    };
    std::istringstream in(lengths);
    std::size_t length = 0;
    for (std::size_t answer = 0; in >> length; ++answer) {
        for (std::size_t bytes = 0; bytes < length; ++bytes) add({answer, bytes, After::close});
        if (module) add({answer, 0, After::silence});
    }
}

TEST(FaultsByBroadcast, EndEveryCallAsThePageSaysAndSpareTheNextOne) {
    std::vector<Case> measurements, cases;
    for (const TalkingCall& call : talking_calls())
        if (call.talks == Talks::by_broadcast || call.talks == Talks::to_wifi_module)
            measurements.push_back({&call, 0, "", 0, [&call] { return measured(call); }});
    const auto lengths = run_on_own_hosts(measurements);
    if (!lengths) GTEST_SKIP() << "there are no networks to broadcast in: see tests/support/own_host";
    add_faults(cases, kSearch);
    for (const Case& measurement : measurements) {
        const Met& met = (*lengths)[static_cast<std::size_t>(&measurement - measurements.data())];
        ASSERT_EQ(met.status, 0) << measurement.call->name;
        if (measurement.call->talks == Talks::by_broadcast) add_faults(cases, *measurement.call);
        add_cuts(cases, *measurement.call, met.reason);
        if (measurement.call->name == "cmd_udpPing")
            add_cuts(cases, kSearch, met.reason); // of the same answers
    }
    std::ranges::stable_sort(cases, {}, [](const Case& c) {
        return c.row != 0 && c.row != kProbeUnanswered && c.row != kSettingUnanswered;
    });
    const auto met = run_on_own_hosts(cases);
    ASSERT_TRUE(met);
    Matrix matrix(kRows);
    for (std::size_t at = 0; at < cases.size(); ++at) matrix.judge(cases[at], (*met)[at]);
    expect_on_page("faults by broadcast", matrix.markdown({{"cmd_udpPing", "Broadcasts"},
                                                           {"cmd_searchController", "Search"},
                                                           {"cmd_AT_setWifiSsidPwd", "Setting up Wi-Fi"},
                                                           {"cmd_AT_getWifiSsidPwd", "Reading Wi-Fi"}}));
}

} // namespace
} // namespace qm::test
