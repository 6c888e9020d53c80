// The table of calls that talk has all of them, and each works.
#include "outcome.h"
#include "simulator/Simulator.h"
#include "talking_calls.h"

#include <gmock/gmock.h>

#include <set>

namespace qm::test {
namespace {

// The functions of the header with the address of a controller among their arguments, and those that
// broadcast.
std::set<std::string> declared() {
    std::set<std::string> names;
    const std::string& header = public_header();
    constexpr std::string_view kStart = "QM_API int ";
    for (std::size_t at = 0; (at = header.find(kStart, at)) != header.npos; ++at) {
        const std::size_t from = at + kStart.size(), open = header.find('(', from);
        const std::string name = header.substr(from, open - from);
        const std::string arguments = header.substr(open, header.find(')', open) - open);
        const bool has_address = arguments.find("const char* ip,") != arguments.npos ||
                                 arguments.find("const char* pIP,") != arguments.npos;
        if (has_address || name.starts_with("cmd_udp") || name.starts_with("cmd_AT_")) names.insert(name);
    }
    names.erase("update_firmware"); // does nothing
    return names;
}

TEST(TalkingCalls, AreAllInTheTable) {
    std::set<std::string> listed;
    for (const TalkingCall& call : talking_calls()) listed.emplace(call.name.substr(0, call.name.find(',')));
    EXPECT_GT(listed.size(), 60U);
    EXPECT_EQ(listed, declared());
}

TEST(TalkingCalls, AreTakenByAController) {
    const std::set<std::string_view> without_delivery = {"cmd_getStopwatch", "cmd_getSensorBrightnessValue",
                                                         "cmd_ofsReedFileBlock", "cmd_confReedFileBlock"};
    const sim::Simulator five({.type = 0x0051}), six;
    for (const TalkingCall& call : talking_calls()) {
        if (call.talks != Talks::to_generation_5 && call.talks != Talks::to_generation_6) continue;
        const Ouint16 port = (call.talks == Talks::to_generation_5 ? five : six).port();
        ASSERT_EQ(prepare_for_calls(port), 0) << qm_last_error();
        EXPECT_EQ(call.run(port), without_delivery.contains(call.name) ? -1 : 0)
            << call.name << ": " << qm_last_error();
    }
}

} // namespace
} // namespace qm::test
