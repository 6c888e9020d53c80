// Every call of the public header that talks, each with arguments that a controller takes: what suites that
// are to meet all of them go through.
#pragma once

#include "qm_sdk_dual.h"

#include <span>
#include <string_view>

namespace qm::test {

enum class Talks { to_generation_5, to_generation_6, by_broadcast, to_wifi_module };

// What a call has given, and why; made as soon as it has returned.
struct Given {
    Given(int code); // NOLINT: a status is one
    operator int() const { return status; }
    int status;
    char reason[512];
};

struct TalkingCall {
    std::string_view name; // of the function; behind a comma what is special
    Talks talks;
    // To 127.0.0.1; calls that broadcast need no port.
    Given (*run)(Ouint16 port);
};

// cmd_searchController is of all kinds at once, and stands in none of them.
std::span<const TalkingCall> talking_calls();

// Gives a controller what the calls ask of it: files, and no password. 0, or the status of what failed. To be
// done before each of them, since some take away what they need.
int prepare_for_calls(Ouint16 port);

} // namespace qm::test
