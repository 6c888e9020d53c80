// The one way to standard output.
#pragma once

namespace qm {

// Prints one of the library's fixed messages, whole even when several threads print.
[[gnu::format(printf, 1, 2)]] void say(const char* format, ...);

} // namespace qm
