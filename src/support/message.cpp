#include "support/message.h"

#include <cstdarg>
#include <cstdio>

namespace qm {

void say(const char* format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    std::vprintf(format, arguments);
    va_end(arguments);
}

} // namespace qm
