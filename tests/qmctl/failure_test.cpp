// What a user learns when it did not work.
#include "child.h"
#include "hex.h"
#include "scripted_peer.h"
#include "simulator/Simulator.h"
#include "wire.h"

#include <gmock/gmock.h>

#include <sstream>

namespace qm::test {
namespace {

using sim::FaultKind;
using testing::AllOf;
using testing::HasSubstr;

TEST(Failure, EveryStatusIsSaidInWords) {
    const struct {
        FaultKind fault;
        int status;
        const char* words;
    } cases[] = {
        {FaultKind::close, -1, "no connection, no usable answer in time"},
        {FaultKind::bad_header, -2, "header checksum"},
        {FaultKind::bad_crc, -3, "CRC of the answer is wrong"},
        {FaultKind::wrong_code, -5, "another command"},
        {FaultKind::oversize, 1, "longer than the caller's buffer"},
        {FaultKind::nack, 199, "the controller refused: error 199"},
    };
    for (const auto& c : cases) {
        sim::Simulator controller({.fault = sim::Fault{.kind = c.fault, .after = 1}}); // after the handshake
        const Outcome outcome = qmctl({"--json", "-c", address(controller.port()), "ping"});
        EXPECT_EQ(outcome.status, 2) << c.words;
        const auto json = nlohmann::json::parse(outcome.out, nullptr, false);
        ASSERT_TRUE(json.is_object()) << outcome.out;
        std::string reason = json["reason"].get<std::string>();
        ASSERT_FALSE(reason.empty());
        if (reason.ends_with('.')) reason.pop_back();
        EXPECT_EQ(outcome.err, "qmctl: " + address(controller.port()) + ": " + reason + " (status " +
                                   std::to_string(c.status) + ")\n");
        EXPECT_EQ(json["ok"], false);
        EXPECT_EQ(json["status"], c.status);
        EXPECT_EQ(json["controller"], address(controller.port()));
        EXPECT_THAT(json["meaning"].get<std::string>(), HasSubstr(c.words));
    }
}

TEST(Failure, EveryVerbSaysThatNobodyAnswers) {
    const Descriptor nobody = bound_socket();
    const std::string at = address(port_of(nobody));
    std::istringstream verbs(
        "ping;text x;text x --rect 0,0,8,8 --screen double;status;clock;clock set;battle;id;"
        "power on;power cancel;power timer 07:00-08:00;brightness 1;lock screen;"
        "unlock program P001;password delete 000000;speed 1;reset;firmware activate F001;"
        "network show;fs ls;fs rm P001;fs df;fs format --yes;fs put " QMCTL_BINARY " P001");
    for (std::string arguments; std::getline(verbs, arguments, ';');) {
        SCOPED_TRACE(arguments);
        const Outcome outcome = qmctl(Words{"-c", at} + arguments.c_str());
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, AllOf(HasSubstr("qmctl: " + at + ": "), HasSubstr("(status -1)")));
        EXPECT_EQ(outcome.out, "");
    }
}

// The steps of a diagnosis up to the first that failed, or all of them.
std::string steps_of(const nlohmann::json& diagnosis) {
    std::string steps;
    for (const auto& step : diagnosis["steps"]) {
        steps += (steps.empty() ? "" : " ") + step["step"].get<std::string>();
        if (!step["ok"]) return steps + " failed";
    }
    return steps;
}

TEST(Doctor, FindsTheStepThatFailsAndSaysWhatToCheckNext) {
    const std::string all = "address port handshake type ping screen clock disk program";
    const sim::LocalSeconds past{std::chrono::local_days{std::chrono::year(2024) / 2 / 29}};
    const struct {
        sim::Options options;
        std::string steps;
    } cases[] = {
        {{}, all},
        {{.type = 0x0051}, all},
        {{.fault = sim::Fault{.kind = FaultKind::close}}, "address port handshake failed"},
        {{.fault = sim::Fault{.kind = FaultKind::garbage}}, "address port handshake failed"},
        {{.type = 0x0199}, "address port handshake type failed"},
        {{.fault = sim::Fault{.kind = FaultKind::nack, .after = 2}}, "address port handshake type failed"},
        {{.clock = [past] { return past; }}, "address port handshake type ping screen clock failed"},
        {{.fault = sim::Fault{.kind = FaultKind::nack, .after = 6}},
         "address port handshake type ping screen clock disk failed"}};
    for (const auto& c : cases) {
        const sim::Simulator controller(c.options);
        const Outcome told = qmctl({"--json", "-c", address(controller.port()), "doctor"});
        const auto diagnosis = nlohmann::json::parse(told.out, nullptr, false);
        ASSERT_TRUE(diagnosis.is_object()) << told.out;
        EXPECT_EQ(steps_of(diagnosis), c.steps) << told.out;
        const bool well = c.steps == all;
        EXPECT_EQ(told.status, well ? 0 : 2);
        EXPECT_EQ(diagnosis["ok"], well);
        EXPECT_EQ(diagnosis.value("reason", "").empty(), well);
        EXPECT_EQ(told.out.find(R"("next":")") == told.out.npos, well);
    }
}

TEST(Doctor, TellsPeopleALineAStep) {
    const Descriptor nobody = bound_socket();
    const std::string at = address(port_of(nobody));
    const Outcome refused = qmctl({"-c", at, "doctor"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.out,
                testing::StartsWith(
                    "Controller  " + at +
                    "\naddress     ok: 127.0.0.1, from 127.0.0.1 on lo\nport        FAILED: Connecting to " +
                    at + " was refused. Check next: is the controller powered"));
    const sim::Simulator controller;
    const Outcome well = qmctl({"-c", address(controller.port()), "doctor"});
    EXPECT_EQ(std::count(well.out.begin(), well.out.end(), '\n'), 10) << well.out;
    EXPECT_THAT(well.out, HasSubstr("screen      ok: 128 x 32 pixels, double, on, brightness 15\n"));
}

TEST(Failure, ScreenOfUnknownSizeAsksForARectangle) {
    const ByteBuffer record = hex("62 02 00*8 00 FE FF 05 00 00 00 00 02 10 01 07 00 00*9 00*20");
    ScriptedPeer controller(
        ScriptedPeer::answering({AnswerFrame{}.bytes(), AnswerFrame{.payload = record}.bytes()}));
    const Outcome outcome = qmctl({"text", "x", "-c", address(controller.port())});
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("--rect"));
}

TEST(Output, ResultThatCannotBeWrittenIsAFailure) {
    const sim::Simulator controller;
    const Outcome outcome = qmctl({"ping", "-c", address(controller.port())}, "", "/dev/full");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("cannot write"));
}

TEST(Output, LibraryMessagesGoToStandardErrorOnlyWhenAskedFor) {
    const sim::Simulator controller;
    const Words quiet{"text", "x", "--json", "-c", address(controller.port())};
    const Outcome without = qmctl(quiet), with = qmctl(quiet + "--verbose");
    EXPECT_EQ(without.err, "");
    EXPECT_THAT(with.err, HasSubstr("Client.m_DeviceType == 0x262"));
    EXPECT_EQ(without.out, with.out);
    EXPECT_TRUE(nlohmann::json::accept(without.out)) << without.out;
}

} // namespace
} // namespace qm::test
