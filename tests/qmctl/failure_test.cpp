// What a user learns when it did not work.
#include "child.h"
#include "hex.h"
#include "scripted_peer.h"
#include "simulator/Simulator.h"
#include "wire.h"

#include <gmock/gmock.h>

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
        EXPECT_THAT(outcome.err, AllOf(HasSubstr(c.words), HasSubstr(address(controller.port()))));
        const auto json = nlohmann::json::parse(outcome.out, nullptr, false);
        ASSERT_TRUE(json.is_object()) << outcome.out;
        EXPECT_EQ(json["ok"], false);
        EXPECT_EQ(json["status"], c.status);
        EXPECT_EQ(json["controller"], address(controller.port()));
        EXPECT_THAT(json["meaning"].get<std::string>(), HasSubstr(c.words));
    }
}

TEST(Failure, EveryVerbSaysThatNobodyAnswers) {
    const Descriptor nobody = bound_socket();
    const std::string at = address(port_of(nobody));
    const std::vector<std::string> verbs[] = {{"ping"},
                                              {"text", "x"},
                                              {"text", "x", "--rect", "0,0,8,8", "--screen", "double"},
                                              {"status"},
                                              {"clock"},
                                              {"clock", "set"},
                                              {"battle"},
                                              {"id"},
                                              {"power", "on"},
                                              {"power", "cancel"},
                                              {"power", "timer", "07:00-08:00"},
                                              {"brightness", "1"},
                                              {"lock", "screen"},
                                              {"unlock", "program", "P001"},
                                              {"password", "delete", "000000"},
                                              {"speed", "1"},
                                              {"reset"},
                                              {"firmware", "activate", "F001"},
                                              {"network", "show"},
                                              {"fs", "ls"},
                                              {"fs", "rm", "P001"},
                                              {"fs", "df"},
                                              {"fs", "format", "--yes"},
                                              {"fs", "put", QMCTL_BINARY, "P001"}};
    for (std::vector<std::string> arguments : verbs) {
        arguments.insert(arguments.end(), {"-c", at});
        const Outcome outcome = qmctl(arguments);
        EXPECT_EQ(outcome.status, 2);
        EXPECT_THAT(outcome.err, HasSubstr(at + ": no connection"));
        EXPECT_EQ(outcome.out, "");
    }
}

TEST(Failure, ScreenOfUnknownSizeAsksForARectangle) {
    const Frame record = hex("62 02 00*8 00 FE FF 05 00 00 00 00 02 10 01 07 00 00*9 00*20");
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
    const std::vector<std::string> quiet{"text", "x", "--json", "-c", address(controller.port())};
    std::vector<std::string> verbose = quiet;
    verbose.emplace_back("--verbose");
    const Outcome without = qmctl(quiet), with = qmctl(verbose);
    EXPECT_EQ(without.err, "");
    EXPECT_THAT(with.err, HasSubstr("retdata.ControllerType == 0x262"));
    EXPECT_EQ(without.out, with.out);
    EXPECT_TRUE(nlohmann::json::accept(without.out)) << without.out;
}

} // namespace
} // namespace qm::test
