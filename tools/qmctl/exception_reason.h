// What an exception says to people.
#pragma once

#include <exception>
#include <new>

namespace qm::ctl {

[[nodiscard]] inline const char* reason_of(const std::exception& error) {
    return dynamic_cast<const std::bad_alloc*>(&error) ? "out of memory" : error.what();
}

} // namespace qm::ctl
