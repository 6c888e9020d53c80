// The local time of this moment.
#pragma once

#include <ctime>

namespace qm {

inline std::tm local_time() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
    ::tzset(); // localtime_r need not notice that the time zone has changed
    localtime_r(&now, &local);
    return local;
}

} // namespace qm
