// The table of calls that talk has all of them.
#include "outcome.h"
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

} // namespace
} // namespace qm::test
